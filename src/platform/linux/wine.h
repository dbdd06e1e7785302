#pragma once

#include <optional>
#include <string>

#include "platform/linux/prefix.h"

namespace gorbex {

/// The program that runs Windows programs; nothing when the host has none.
[[nodiscard]] std::optional<std::string> FindWine();

/// True while Wine's server keeps the prefix's registry, and so may know more than its files.
[[nodiscard]] bool IsWineRunning(const Prefix& prefix);

/// The present contents of the prefix's registry at a key ("HKEY_LOCAL_MACHINE\...") and below it,
/// in the format of registration files; empty when there is no such key, nothing when Wine does not
/// tell.
[[nodiscard]] std::optional<std::string> ExportWineKey(const Prefix& prefix,
                                                       const std::string& key);

}  // namespace gorbex
