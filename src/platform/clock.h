#pragma once

#include <chrono>

namespace gorbex {

/// A calendar date with a time of day on the 24-hour clock.
struct CivilTime {
  int year = 1601;
  int month = 1;  ///< 1 to 12
  int day = 1;    ///< 1 to 31
  int hour = 0;
  int minute = 0;
  int second = 0;
};

class Clock {
 public:
  virtual ~Clock() = default;

  [[nodiscard]] virtual CivilTime LocalNow() const = 0;

  /// Time since some fixed moment; never runs backwards. For durations.
  [[nodiscard]] virtual std::chrono::milliseconds Elapsed() const {
    return std::chrono::duration_cast<std::chrono::milliseconds>(
        std::chrono::steady_clock::now().time_since_epoch());
  }
};

}  // namespace gorbex
