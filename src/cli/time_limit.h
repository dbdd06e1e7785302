#pragma once

#include <CLI/CLI.hpp>
#include <chrono>
#include <optional>

#include "cli/session.h"

namespace gorbex::cli {

/// Ends a compiler, or whatever else the program waits for, that takes too long: one that asks
/// something in a window which nobody sees would otherwise block the program forever.
class TimeLimit {
 public:
  /// With a limit of 0 nothing is ever ended. The session outlives this.
  TimeLimit(Session& session, std::chrono::seconds limit);

  /// To be called while a program is waited for.
  void Tick();

 private:
  Session& session_;
  std::chrono::seconds limit_;
  bool isWaiting_ = false;
  std::optional<std::chrono::milliseconds> begun_;  ///< nothing between two waits, or once told
  Subscription listening_;
};

/// Gives a command the option --time-limit.
void AddTimeLimit(CLI::App& command, int& seconds);

}  // namespace gorbex::cli
