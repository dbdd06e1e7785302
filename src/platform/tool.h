#pragma once

#include <chrono>
#include <cstdint>
#include <map>
#include <optional>
#include <string>
#include <variant>
#include <vector>

#include "platform/runtime_error.h"

namespace gorbex {

/// A tool to run: a program of the host's search path, or one whose whole host path is given, with
/// its arguments as they are, no command line and no shell. Arguments, variables and what the tool
/// says are UTF-8, unlike every other text: a tool may name files that the code page cannot spell.
struct ToolCall {
  std::string program;
  std::vector<std::string> arguments{};
  std::string folder{};  ///< Windows path of the folder it runs in

  /// Variables to add to this program's environment; a value of nothing removes one.
  std::map<std::string, std::optional<std::string>> environment{};

  std::string input{};  ///< what the tool reads

  /// How long it may run before it is ended; nothing for no limit.
  std::optional<std::chrono::milliseconds> patience{};
};

struct ToolResult {
  std::uint32_t exitCode = 0;
  std::string output{};
  std::string errorOutput{};
};

/// Distinguishes a tool that could not be started from one that ended badly.
using ToolOutcome = std::variant<ToolResult, RuntimeError>;

class ToolRunner {
 public:
  virtual ~ToolRunner() = default;

  /// Waits for the tool's end, the user interface staying alive meanwhile. The tool asks nobody.
  /// Errors: 53 no such program, 76 no such folder, 5 cannot be run or took too long, 7 it says
  /// more than 256 MB.
  [[nodiscard]] virtual ToolOutcome Run(const ToolCall& call) = 0;
};

}  // namespace gorbex
