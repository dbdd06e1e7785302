#pragma once

#include "platform/component_objects.h"
#include "platform/linux/prefix.h"
#include "platform/registry.h"

namespace gorbex {

struct PluginClass;

/// Makes objects of plug-ins: shared libraries which the registry names as the in-process servers
/// of classes, where Windows has DLLs. Both services must outlive it, but need not outlive its
/// objects: every object keeps its own library loaded.
class PluginObjects : public ComponentObjects {
 public:
  PluginObjects(const RegistryReader& registry, const Prefix& prefix)
      : registry_(registry), prefix_(prefix) {}

  [[nodiscard]] std::unique_ptr<ComponentObject> CreateObject(
      const std::string& identifier) override;

  /// Plug-ins have no licences: says no more than whether the identifier is registered.
  void AddLicense(const std::string& identifier) override;

  [[nodiscard]] std::unique_ptr<ComponentControl> CreateControl(
      const std::string& identifier, std::function<void()> repaint) override;

 private:
  [[nodiscard]] std::string DefaultText(const std::string& classesKey) const;
  [[nodiscard]] std::string ClassIdentifier(const std::string& identifier) const;
  [[nodiscard]] PluginClass Load(const std::string& identifier) const;

  const RegistryReader& registry_;
  const Prefix& prefix_;
};

}  // namespace gorbex
