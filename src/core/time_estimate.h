#pragma once

#include <algorithm>
#include <chrono>

namespace gorbex {

/// How long a run still takes, if every project takes as long as last time.
struct TimeEstimate {
  std::chrono::milliseconds left{0};     ///< when the estimate was made
  std::chrono::milliseconds present{0};  ///< for so long, the projects being built then go on

  /// The rest, when this time has passed since the estimate was made. Projects that take longer
  /// than last time count as nearly done, and take no time from those that begin after them.
  [[nodiscard]] std::chrono::milliseconds After(std::chrono::milliseconds time) const {
    return left - std::min(time, present);
  }
};

}  // namespace gorbex
