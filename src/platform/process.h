#pragma once

#include <chrono>
#include <cstdint>
#include <memory>
#include <optional>
#include <string>
#include <variant>
#include <vector>

#include "platform/runtime_error.h"

namespace gorbex {

/// A started child process. Destroying it lets the process go on unobserved.
class Process {
 public:
  virtual ~Process() = default;

  /// The exit code; nothing while the process is still active. Waits for its end at most for the
  /// patience given, so that a caller can poll without burning a processor.
  [[nodiscard]] virtual std::optional<std::uint32_t> ExitCode(
      std::chrono::milliseconds patience) = 0;

  /// Ends the process at once; its exit code follows as for any end.
  virtual void Terminate() = 0;

  /// From now on the process goes on even when this program is killed, wherever the system would
  /// otherwise end the two together.
  virtual void OutliveProgram() {}
};

/// Distinguishes a process that could not be started from one that ended badly.
using StartResult = std::variant<std::unique_ptr<Process>, RuntimeError>;

class ProcessLauncher {
 public:
  virtual ~ProcessLauncher() = default;

  /// Starts a command line as the system's process start does: the program comes first, quoted or
  /// not; no shell reads it. Error 53 when the program cannot be found, 5 when it cannot be run.
  [[nodiscard]] virtual StartResult Start(const std::string& commandLine) = 0;

  /// Starts a program, found as Start finds it, with these arguments (UTF-8), each as it is. Errors
  /// as Start.
  [[nodiscard]] virtual StartResult StartProgram(const std::string& program,
                                                 const std::vector<std::string>& arguments) = 0;
};

}  // namespace gorbex
