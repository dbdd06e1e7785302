#pragma once

#include <functional>
#include <optional>
#include <string>
#include <string_view>
#include <vector>

namespace gorbex {

/// A command line taken apart as the system's process start does.
struct CommandLine {
  std::string program;
  std::string_view arguments;  ///< the text after the program, a view into the command line
};

/// Finds the program at the start of the command line. In quotes it is the text up to the closing
/// quote. Without quotes it may end at any blank: the shortest text is tried first. Each text is
/// tried as it is and, when its last component has no ".", also with ".exe". The first that is a
/// file is the program; nothing when none is.
[[nodiscard]] std::optional<CommandLine> FindProgram(
    std::string_view commandLine, const std::function<bool(const std::string&)>& isFile);

/// The first text that FindProgram tries, to name a program that was not found.
[[nodiscard]] std::string ProgramText(std::string_view commandLine);

/// Arguments as the compiler's C run-time library hands them to a program.
[[nodiscard]] std::vector<std::string> SplitArguments(std::string_view arguments);

/// As SplitArguments, for command lines that quote folders as they are: in "C:\Out\" the last
/// backslash is a part of the folder, and the quote after it ends the argument.
[[nodiscard]] std::vector<std::string> SplitFolderArguments(std::string_view arguments);

/// The text, with a blank before each argument, that a program takes for exactly these arguments.
[[nodiscard]] std::string JoinArguments(const std::vector<std::string>& arguments);

}  // namespace gorbex
