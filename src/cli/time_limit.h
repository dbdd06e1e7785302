#pragma once

#include <CLI/CLI.hpp>
#include <chrono>

#include "cli/session.h"

namespace gorbex::cli {

/// Ends a compiler, or whatever else the program waits for, that takes too long: one that asks
/// something in a window which nobody sees would otherwise block the program forever.
class TimeLimit {
 public:
  /// With a limit of 0 nothing is ever ended. The session outlives this.
  TimeLimit(Session& session, std::chrono::seconds limit) : session_(session), limit_(limit) {}

  /// To be called while a program is waited for.
  void Tick();

 private:
  Session& session_;
  std::chrono::seconds limit_;
};

/// Gives a command the option --time-limit.
void AddTimeLimit(CLI::App& command, int& seconds);

}  // namespace gorbex::cli
