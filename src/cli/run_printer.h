#pragma once

#include <chrono>
#include <optional>
#include <ostream>
#include <set>
#include <string>

#include "cli/frame.h"
#include "core/run_events.h"
#include "platform/clock.h"

namespace gorbex::cli {

/// Prints a build run as it happens: a line for every project, and a progress bar below them on a
/// terminal.
class RunPrinter {
 public:
  /// Lines go to `lines`; the bar to the error stream, when that is a terminal.
  RunPrinter(const Frame& frame, std::ostream& lines, const Clock& clock)
      : frame_(frame), lines_(lines), clock_(clock) {}

  void On(const RunEvent& event);

  /// Moves the elapsed time on; to be called while a compiler runs.
  void Tick();

 private:
  void Tell(const ProjectCompiled& compiled);
  void TellNotGot();
  void TellEnd(const RunEnded& ended);
  void DrawBar();
  void ClearBar();
  void Draw(const std::string& whole);

  const Frame& frame_;
  std::ostream& lines_;
  const Clock& clock_;
  std::string current_;                ///< the project being built; empty between projects
  std::string step_;                   ///< of the project being built
  std::optional<std::string> notGot_;  ///< why its latest sources were not got
  std::set<std::string> toldProblems_;
  std::size_t number_ = 0;
  std::size_t of_ = 0;
  std::chrono::milliseconds start_{0};
  std::chrono::milliseconds drawn_{0};
  std::size_t barWidth_ = 0;  ///< columns of the bar that is shown; 0 for none
};

}  // namespace gorbex::cli
