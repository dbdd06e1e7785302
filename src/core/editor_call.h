#pragma once

#include <cstddef>
#include <optional>
#include <string>
#include <string_view>
#include <vector>

namespace gorbex {

/// A program with its arguments, each as the program gets it.
struct EditorCall {
  std::string program;                 ///< in the code page
  std::vector<std::string> arguments;  ///< UTF-8: the file may have any name
};

/// Why a text cannot be the setting Editor, on one line; nothing for one that can, such as an empty
/// one.
[[nodiscard]] std::optional<std::string> EditorProblem(std::string_view setting);

/// The call of the setting Editor for a file (UTF-8) and a line from 1. The setting is a program,
/// in double quotes when its path has blanks, and arguments in which %FILE% and %LINE% mean file
/// and line; without %FILE% the file is the last argument. No shell reads them: a file is never
/// more than a part of its one argument. Error 5 for a setting that has an EditorProblem.
[[nodiscard]] EditorCall EditorCallOf(const std::string& setting, const std::string& file,
                                      std::size_t line);

}  // namespace gorbex
