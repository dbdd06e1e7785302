#pragma once

#include <string>

namespace gorbex {

/// Requires that a path of a file or folder, in double quotes on a command line, is one argument
/// there and no option. Paths come from project files and mails; no full Windows path holds a quote
/// or a control character or begins as an option does. Error 52 with the path, made fit to be
/// shown.
void RequireArgument(const std::string& path);

/// The same for the path of a file, which must not end in a backslash either: after one the closing
/// quote would be a part of the argument, and what follows another one.
void RequireFileArgument(const std::string& path);

}  // namespace gorbex
