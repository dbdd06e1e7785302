#pragma once

#include <optional>
#include <string>
#include <string_view>

#include "core/registry_tools.h"

namespace gorbex {

/// The key under which the registry has a reference: "{GUID}#VERSION#LCID", the version in
/// hexadecimal. Nothing for a value that names no type library.
[[nodiscard]] std::optional<std::string> LibraryKeyOf(std::string_view referenceValue);

/// The file that the registry has for such a key; empty when it has none.
[[nodiscard]] std::string RegisteredFile(const RegistryTools& registry,
                                         const std::string& libraryKey);

}  // namespace gorbex
