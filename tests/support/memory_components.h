#pragma once

#include <map>
#include <string>
#include <utility>

#include "platform/component_inspector.h"
#include "platform/component_objects.h"
#include "platform/runtime_error.h"
#include "tests/support/journal.h"

namespace gorbex::test {

/// Component files with the interface GUIDs a test gave them. A file that begins with "{GUID}" has
/// its first line as its type library, in version 1.0.
struct FixedInspector : ComponentInspector {
  std::map<std::string, std::string> guids;

  [[nodiscard]] std::string InterfaceGuid(const std::string& componentFile,
                                          const std::string& defaultText) const override {
    const auto found = guids.find(componentFile);
    return found == guids.end() ? defaultText : found->second;
  }
  [[nodiscard]] std::optional<InnerLibrary> LibraryIn(std::string_view file) const override {
    if (!file.starts_with('{')) return std::nullopt;
    return InnerLibrary{file.substr(0, file.find('\n')),
                        std::string(file.substr(0, file.find('}') + 1)), "1.0"};
  }
};

/// Registered components in memory, which are objects and controls alike. Journals "license ID",
/// "create ID", "size ID WIDTH" and "destroy ID".
struct MemoryComponents : ComponentObjects {
  explicit MemoryComponents(Journal& effects) : journal(effects) {}

  Journal& journal;
  std::map<std::string, std::string> values;  ///< of "ID", which registers it, and of "IDNAME"
  std::function<void()> repaint;              ///< of the newest control
  int letGo = 0;                              ///< how often files were let go of

  struct Component : ComponentObject, ComponentControl {
    Component(MemoryComponents& of, std::string name) : all(of), id(std::move(name)) {}
    ~Component() override { all.journal.push_back("destroy " + id); }

    std::string& At(const std::string& name) const {
      if (all.values.contains(id + name)) return all.values[id + name];
      throw RuntimeError(ErrorNumber::NoSuchProperty, name);
    }
    void Let(const std::string& name, const std::string& value) override { At(name) = value; }
    std::string Get(const std::string& name) override { return At(name); }
    void SetSize(ControlSize size) override {
      all.journal.push_back("size " + id + " " + std::to_string(size.width));
      if (!all.values.contains(id)) At("Size");
    }
    void Paint(const PixelBuffer& /*to*/) override { At("Picture"); }

    MemoryComponents& all;
    std::string id;
  };

  void LetGoOfUnused() override { ++letGo; }

  std::unique_ptr<Component> Create(const std::string& id) {
    journal.push_back("create " + id);
    if (!values.contains(id)) throw RuntimeError(ErrorNumber::CannotCreateObject, id);
    return std::make_unique<Component>(*this, id);
  }
  std::unique_ptr<ComponentControl> CreateControl(const std::string& id,
                                                  std::function<void()> wish) override {
    repaint = std::move(wish);
    return Create(id);
  }
  std::unique_ptr<ComponentObject> CreateObject(const std::string& id) override {
    return Create(id);
  }
  void AddLicense(const std::string& id) override { journal.push_back("license " + id); }
};

}  // namespace gorbex::test
