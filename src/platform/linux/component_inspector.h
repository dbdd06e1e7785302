#pragma once

#include <optional>

#include "platform/component_inspector.h"
#include "platform/file_system.h"
#include "platform/linux/type_library.h"

namespace gorbex {

/// The type library of a component: the file itself, or the first TYPELIB resource of a program
/// or library; a number behind the file ("...\script.dll\3") names the resource. Nothing when the
/// file cannot be read or has none in the MSFT format.
[[nodiscard]] std::optional<TypeLibrary> TypeLibraryOf(const FileReader& files,
                                                       const std::string& componentFile);

/// Reads type libraries with no help of the system. Of the interfaces that a library defines it
/// answers the default one of the first class that has such, else the first in the file.
class LinuxComponentInspector : public ComponentInspector {
 public:
  explicit LinuxComponentInspector(const FileReader& files) : files_(files) {}

  [[nodiscard]] std::string InterfaceGuid(const std::string& componentFile,
                                          const std::string& defaultText) const override;

 private:
  const FileReader& files_;
};

}  // namespace gorbex
