#pragma once

#include <sys/types.h>
#include <unistd.h>

#include <functional>
#include <map>
#include <optional>
#include <string>
#include <vector>

#include "platform/linux/host_file.h"
#include "platform/process.h"

namespace gorbex {

/// How a child starts: without open files but its input and output, with the usual signals, and in
/// its own session. Our terminal and its keys do not reach it, and it is ended with the helpers
/// that it started.
struct ChildStart {
  std::vector<std::string> arguments;  ///< the program's host path first
  std::vector<std::string> environment;
  std::string folder{};        ///< of the host; empty for our own
  int input = -1;              ///< below zero for nothing to read
  int output = STDERR_FILENO;  ///< below zero for nowhere
  int errorOutput = STDERR_FILENO;
};

/// A child of this process, watched through its own descriptor.
class ChildProcess : public Process {
 public:
  /// Fails with std::system_error. The call is made once, when the child's end is seen.
  explicit ChildProcess(const ChildStart& start, std::function<void()> onEnded = {});
  ~ChildProcess() override;

  [[nodiscard]] std::optional<std::uint32_t> ExitCode(std::chrono::milliseconds patience) override;
  void Terminate() override;
  void OutliveProgram() override;

  /// Asks the process and its helpers to end, so that they can clean up, and ends
  /// those that have not done so in time.
  void End(std::chrono::milliseconds patience);

  /// Ends all children that are waited for, with their helpers. For the moment in which a signal
  /// ends this program: nothing but calls that a signal handler may make.
  static void TerminateAll();

 private:
  bool Reap();
  void Wait(std::chrono::milliseconds patience);

  pid_t id_;  ///< also of the group that it leads
  Descriptor watch_;
  std::function<void()> onEnded_;
  std::optional<std::uint32_t> exitCode_;
};

/// The program of that name in the host's search path, or of that whole path.
[[nodiscard]] std::optional<std::string> FindOnHost(const std::string& name);

/// This program's environment with variables set, or taken away where the value is nothing.
[[nodiscard]] std::vector<std::string> EnvironmentWith(
    const std::map<std::string, std::optional<std::string>>& changes);

}  // namespace gorbex
