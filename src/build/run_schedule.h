#pragma once

#include <chrono>
#include <cstddef>
#include <optional>
#include <set>
#include <string>
#include <unordered_set>
#include <utility>
#include <vector>

#include "core/time_estimate.h"

namespace gorbex {

/// The data of a project of the run that a schedule needs.
struct ScheduledProject {
  std::vector<std::size_t> uses;    ///< projects of the run, by their numbers from 0
  std::vector<std::string> claims;  ///< only this project may use these while it is built
  std::string writes;               ///< the built file
  std::string reads;                ///< the file that it is compatible with; empty for none
  std::optional<std::chrono::milliseconds> lastDuration;
};

/// A project that is being built.
struct ProjectAtWork {
  std::size_t project = 0;            ///< its number in the schedule
  std::chrono::milliseconds time{0};  ///< since it began
};

/// Decides which project of a run may start next when several are built side by side. A project
/// starts when all that it uses are done. The order of the queue decides in a circle, and among the
/// projects that write one file or keep compatible with a file that another writes. Of those that
/// may start, the one with the longest way to the end of the run is the first.
class RunSchedule {
 public:
  /// The projects in the order of the queue.
  explicit RunSchedule(std::vector<ScheduledProject> projects);

  /// The project that starts now; nothing while all that are left wait for others.
  [[nodiscard]] std::optional<std::size_t> Next();

  /// A project that started has ended, well or badly.
  void Done(std::size_t project);

  [[nodiscard]] std::size_t DoneCount() const { return done_; }

  /// How long the rest of the run takes with this number of places. Nothing when no project's
  /// duration is known.
  [[nodiscard]] std::optional<TimeEstimate> TimeLeft(
      std::size_t places, const std::vector<ProjectAtWork>& atWork) const;

 private:
  using Moment = std::pair<std::chrono::milliseconds, std::size_t>;

  struct Project {
    std::vector<std::size_t> users;  ///< that wait for this one
    std::vector<std::string> claims;
    std::size_t waitsFor = 0;
    std::chrono::milliseconds duration{0};
    std::chrono::milliseconds wayToEnd{0};
  };

  void TakeDurations(const std::vector<ScheduledProject>& projects);
  void MeasureWays(const std::vector<std::size_t>& buildOrder);
  void Offer(std::size_t project);
  [[nodiscard]] std::chrono::milliseconds Rehearse(std::size_t places,
                                                   std::vector<Moment> ends) const;

  std::vector<Project> projects_;
  std::set<Moment> ready_;  ///< the longest way first
  std::unordered_set<std::string> claimed_;
  std::size_t done_ = 0;
  bool knowsDurations_ = false;
};

}  // namespace gorbex
