#pragma once

#include <string>

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

 private:
  ProcessLauncher& processes_;
  EventPump& events_;
};

}  // namespace gorbex
