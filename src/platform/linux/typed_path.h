#pragma once

#include <string>

#include "platform/linux/prefix.h"

namespace gorbex {

/// The program's path form of a path that a user typed in UTF-8, of the host or of Windows. Error
/// 52 when it has none.
[[nodiscard]] std::string ProgramPathOf(const Prefix& prefix, const std::string& typed);

}  // namespace gorbex
