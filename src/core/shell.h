#pragma once

#include <string>
#include <vector>

#include "core/signal.h"
#include "platform/event_pump.h"
#include "platform/process.h"

namespace gorbex {

/// Runs programs and waits for them while the user interface goes on.
class Shell {
 public:
  Shell(ProcessLauncher& processes, EventPump& events) : processes_(processes), events_(events) {}

  /// True exactly when the command ended with exit code 0. There is no time-out: a compiler may
  /// take its time. The error of the launcher when the command cannot be started.
  bool ShellAndWait(const std::string& commandLine);

  enum class Ended { Well, Badly, ByUs };

  /// Whether a program is ended, where the system can do that, when this one is killed.
  enum class Life { EndsWithUs, ItsOwn };

  /// As ShellAndWait, but an end by TerminateAll has its own result.
  Ended RunAndWait(const std::string& commandLine, Life life = Life::EndsWithUs);

  /// Announced before a program is started.
  Signal<> starting;

  /// Announced when the first wait begins and when the last one ends.
  Signal<> waitsChanged;

  /// Whether a program is being waited for.
  [[nodiscard]] bool Waits() const { return !running_.empty(); }

  /// Ends every program that is being waited for.
  void TerminateAll();

  /// Ends every program that is being waited for and starts no other: from now on a command counts
  /// as ended by the user before it began.
  void Close();

 private:
  class Waiting;
  struct Running {
    Process* process;
    bool isTerminated;
  };

  ProcessLauncher& processes_;
  EventPump& events_;
  bool isClosed_ = false;
  std::vector<Running> running_;  ///< waits can nest: a window lets the user start another
};

}  // namespace gorbex
