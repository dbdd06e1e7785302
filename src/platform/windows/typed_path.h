#pragma once

#include <string>

namespace gorbex {

/// The program's path form of a path that a user typed in UTF-8. Error 52 when it has none.
[[nodiscard]] std::string ProgramPathOf(const std::string& typed);

}  // namespace gorbex
