#pragma once

#include <string>

namespace gorbex {

/// Requires that a path of a file or folder, in double quotes on a command line, is one argument
/// there and not an option. Paths come from project files and mails; a full Windows path has no
/// quote or control character and does not begin like an option. Error 52 with the path, made fit
/// to be shown.
void RequireArgument(const std::string& path);

/// The same for the path of a file, which must not end in a backslash either: after one the closing
/// quote would be part of the argument.
void RequireFileArgument(const std::string& path);

}  // namespace gorbex
