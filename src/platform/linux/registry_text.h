#pragma once

#include <cstddef>
#include <string>
#include <string_view>

#include "platform/linux/registry_key.h"

namespace gorbex {

/// Adds the contents of a registry file in Wine's text format to the key; a later value replaces an
/// earlier one. Skips lines it cannot parse and returns their number.
std::size_t ReadRegistryText(std::string_view text, RegistryKey& into);

/// The same for a registration file in UTF-16, as the system's registry editor exports it: its keys
/// begin with the names of their roots.
std::size_t ReadRegistryExport(std::string_view utf16, RegistryKey& into);

/// All keys below the given one in the same format, in a fixed order.
[[nodiscard]] std::string WriteRegistryText(const RegistryKey& top);

}  // namespace gorbex
