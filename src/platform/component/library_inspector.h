#pragma once

#include <optional>
#include <string>
#include <string_view>

#include "platform/component/library_file.h"
#include "platform/component_inspector.h"
#include "platform/file_system.h"

namespace gorbex {

/// The GUID of an interface that the library defines: the default one of the first class that has
/// such, else the first in the file. Empty when it defines none.
[[nodiscard]] std::string OwnInterfaceOf(const TypeLibrary& library);

/// Reads type libraries with no help of the system.
class LibraryInspector : public ComponentInspector {
 public:
  explicit LibraryInspector(const FileReader& files) : files_(files) {}

  [[nodiscard]] std::string InterfaceGuid(const std::string& componentFile,
                                          const std::string& defaultText) const override;
  [[nodiscard]] std::optional<InnerLibrary> LibraryIn(std::string_view file) const override {
    return InnerLibraryOf(file);
  }

 protected:
  [[nodiscard]] virtual std::optional<TypeLibrary> Read(const std::string& componentFile) const {
    return TypeLibraryOf(files_, componentFile);
  }

  const FileReader& files_;
};

}  // namespace gorbex
