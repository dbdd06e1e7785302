#pragma once

#include <string>
#include <variant>
#include <vector>

namespace gorbex::standin {

enum class Task { Make, Run, Install };

struct CommandLine {
  Task task = Task::Make;
  std::string project;
  std::string resultLog;
  std::string outputFolder;  ///< empty: the project's own
  std::string constants;     ///< accepted for the command line's sake; no check depends on them
};

struct UsageError {
  std::string message;
};

/// Reads the arguments after the program's name. The project may be before or after any
/// switch; switches ignore letter case.
[[nodiscard]] std::variant<CommandLine, UsageError> ParseCommandLine(
    const std::vector<std::string>& arguments);

}  // namespace gorbex::standin
