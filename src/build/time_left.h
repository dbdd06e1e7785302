#pragma once

#include <chrono>
#include <cstddef>
#include <optional>
#include <vector>

#include "core/time_estimate.h"

namespace gorbex {

/// Estimates how long the rest of a run takes whose projects are built one after the other. A
/// project that was never built takes as long as the others on average.
class TimeLeft {
 public:
  using Durations = std::vector<std::optional<std::chrono::milliseconds>>;

  TimeLeft() = default;

  /// Takes the durations of the last builds, in the order of the run.
  explicit TimeLeft(const Durations& last);

  /// The estimate at the start of a project, numbered from 1. Nothing when no duration is known.
  [[nodiscard]] std::optional<TimeEstimate> From(std::size_t number) const;

 private:
  std::vector<TimeEstimate> left_;  ///< from each project on; empty when not known
};

}  // namespace gorbex
