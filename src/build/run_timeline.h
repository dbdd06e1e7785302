#pragma once

#include <chrono>
#include <cstddef>
#include <optional>
#include <vector>

#include "core/run_record.h"

namespace gorbex {

/// The time of one project, measured from the start of the run.
struct TimelineBar {
  std::size_t project = 0;  ///< its number in the record
  std::size_t place = 1;    ///< of its compiler, from 1: the lane
  std::chrono::milliseconds start{0};
  std::chrono::milliseconds end{0};  ///< the present while it is being built
  bool isCritical = false;

  [[nodiscard]] std::chrono::milliseconds Duration() const { return end - start; }
};

/// When and where the projects of a run were built.
struct RunTimeline {
  std::vector<TimelineBar> bars;                  ///< one for each project that has begun, by start
  std::vector<std::size_t> criticalPath;          ///< numbers of bars, up to the one that ends last
  std::vector<std::optional<std::size_t>> barOf;  ///< by project; nothing before it has begun
  std::size_t places = 0;
  std::chrono::milliseconds length{0};  ///< up to the last end, or to the present

  /// The bars, the longest first; those that took no time are left out.
  [[nodiscard]] std::vector<std::size_t> Slowest() const;
};

/// The timeline of a run that has lasted for `length`. `uses` comes from UsesInRun, by the record's
/// numbers. The critical path leads back from the project that ended last. Each of its projects
/// waited for the one before it: for a project that it uses, or for the one that had its place,
/// whichever ended later.
[[nodiscard]] RunTimeline TimelineOf(const RunRecord& record,
                                     const std::vector<std::vector<std::size_t>>& uses,
                                     std::chrono::milliseconds length);

}  // namespace gorbex
