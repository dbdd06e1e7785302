#pragma once

#include <string>
#include <vector>

#include "core/signal.h"
#include "core/work.h"
#include "platform/event_pump.h"
#include "platform/process.h"

namespace gorbex {

/// Runs programs and waits for them while the user interface goes on.
class Shell {
 public:
  Shell(ProcessLauncher& processes, EventPump& events, Work& work)
      : processes_(processes), events_(events), work_(work) {}

  /// True exactly when the command ended with exit code 0. There is no time-out: a compiler may
  /// take its time. The error of the launcher when the command cannot be started.
  bool ShellAndWait(const std::string& commandLine);

  enum class Ended { Well, Badly, ByUs };

  /// Whether a program is ended, where the system can do that, when this one is killed.
  enum class Life { EndsWithUs, ItsOwn };

  /// As ShellAndWait, but an end by TerminateAll has its own result, and so has a command that is
  /// not started because everything is to end.
  Ended RunAndWait(const std::string& commandLine, Life life = Life::EndsWithUs);

  /// Announced before a program is started.
  Signal<> starting;

  /// Ends every program that is being waited for.
  void TerminateAll();

 private:
  class Waiting;
  struct Running {
    Process* process;
    bool isTerminated;
  };

  ProcessLauncher& processes_;
  EventPump& events_;
  Work& work_;
  std::vector<Running> running_;  ///< waits can nest: a window lets the user start another
};

}  // namespace gorbex
