#pragma once

#include <cstdint>
#include <optional>
#include <string>
#include <string_view>

#include "platform/component/type_library.h"
#include "platform/component_inspector.h"
#include "platform/file_system.h"

namespace gorbex {

/// Where a type library is: a file, and the number of a resource of it.
struct LibraryPlace {
  std::string file;
  std::optional<std::uint16_t>
      resource{};  ///< its number; nothing means the file itself or its first library
};

/// The bytes of the type library in those of a component file, with its identity. Nothing when
/// there is none in the MSFT format.
[[nodiscard]] std::optional<InnerLibrary> InnerLibraryOf(std::string_view file);

/// Takes a resource number ("...\script.dll\3") off a path that does not name a file with it.
[[nodiscard]] LibraryPlace PlaceOfLibrary(const FileReader& files, const std::string& path);

/// The type library of a component: the file itself, or the first TYPELIB resource of a program
/// or library; a number after the file ("...\script.dll\3") names the resource. Nothing when the
/// file cannot be read or has none in the MSFT format.
[[nodiscard]] std::optional<TypeLibrary> TypeLibraryOf(const FileReader& files,
                                                       const std::string& componentFile);

}  // namespace gorbex
