#pragma once

#include "platform/component/library_file.h"
#include "platform/component/own_interface.h"
#include "platform/component_inspector.h"
#include "platform/file_system.h"

namespace gorbex {

/// Reads type libraries with no help of the system.
class LinuxComponentInspector : public ComponentInspector {
 public:
  explicit LinuxComponentInspector(const FileReader& files) : files_(files) {}

  [[nodiscard]] std::string InterfaceGuid(const std::string& componentFile,
                                          const std::string& defaultText) const override {
    const auto library = TypeLibraryOf(files_, componentFile);
    const auto guid = library ? OwnInterfaceOf(*library) : std::string();
    return guid.empty() ? defaultText : guid;
  }
  [[nodiscard]] std::optional<InnerLibrary> LibraryIn(std::string_view file) const override {
    return InnerLibraryOf(file);
  }

 private:
  const FileReader& files_;
};

}  // namespace gorbex
