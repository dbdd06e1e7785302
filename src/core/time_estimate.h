#pragma once

#include <algorithm>
#include <chrono>

namespace gorbex {

/// How long a run still takes, if every project takes as long as last time.
struct TimeEstimate {
  std::chrono::milliseconds left{0};     ///< at the time of the estimate
  std::chrono::milliseconds present{0};  ///< until the projects being built then should be done

  /// How long the run still takes when this time has passed since the estimate. Does not fall
  /// further once the projects being built should be done: those that begin after them still take
  /// their whole time.
  [[nodiscard]] std::chrono::milliseconds After(std::chrono::milliseconds time) const {
    return left - std::min(time, present);
  }
};

}  // namespace gorbex
