#pragma once

#include <chrono>
#include <optional>
#include <ostream>
#include <set>
#include <string>
#include <vector>

#include "cli/frame.h"
#include "cli/progress_rows.h"
#include "cli/shown_paths.h"
#include "core/run_events.h"
#include "platform/clock.h"

namespace gorbex::cli {

/// Prints a build run as it happens: a line for every project that is done, and on a terminal the
/// run's progress below them, with a row for each of several projects that are built side by side.
class RunPrinter {
 public:
  /// Prints lines to `lines`, and progress to the error stream when that is a terminal.
  RunPrinter(const Frame& frame, std::ostream& lines, const Clock& clock, const Host& host)
      : frame_(frame), lines_(lines), clock_(clock), paths_(host), rows_(frame.streams) {}

  void On(const RunEvent& event);

  /// Moves the elapsed times on; to be called while compilers run.
  void Tick();

 private:
  struct Building {
    std::string path;
    std::chrono::milliseconds start{0};
    std::string step{};
    std::optional<TimeEstimate> left{};   ///< of the run, from the start on
    std::optional<std::string> notGot{};  ///< why its latest sources were not got
  };

  void Hear(const RunStarted& started) { of_ = started.paths.size(); }
  void Hear(const ProjectStarted& project);
  void Hear(const ProjectSkipped& skipped);
  void Hear(const ProjectUpToDate& fresh);
  void Hear(const StepStarted& step);
  void Hear(const LatestGot& latest);
  void Hear(const ProjectCompiled& compiled);
  void Hear(const RunPaced& paced);
  void Hear(const QuestionAsked&) { rows_.Clear(); }
  void Hear(const QuestionAnswered&) { Draw(); }
  void Hear(const RunEnded& ended);
  void Hear(const auto& /*other*/) {}

  /// The start of a line about a project that is done.
  [[nodiscard]] std::string Done(const std::string& path);
  [[nodiscard]] Building* Find(const std::string& path);
  void Forget(const std::string& path) {
    std::erase_if(building_, [&](const Building& each) { return each.path == path; });
  }
  void TellNotGot(const std::string& path);
  void Draw();
  [[nodiscard]] std::string Bar() const;
  [[nodiscard]] std::string Row(const Building& building) const;

  const Frame& frame_;
  std::ostream& lines_;
  const Clock& clock_;
  ShownPaths paths_;
  ProgressRows rows_;
  std::vector<Building> building_;
  std::set<std::string> toldProblems_;
  std::size_t done_ = 0;
  std::size_t of_ = 0;
  std::optional<RunPaced> pace_;  ///< nothing while projects are built one after the other
  std::chrono::milliseconds paced_{0};
  std::chrono::milliseconds drawn_{0};
};

}  // namespace gorbex::cli
