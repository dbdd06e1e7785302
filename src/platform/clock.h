#pragma once

#include <algorithm>
#include <chrono>
#include <cstdint>
#include <ratio>

#include "platform/file_system.h"

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

  /// The present as file times tell it.
  [[nodiscard]] virtual FileTime Now() const {
    using Ticks = std::chrono::duration<std::int64_t, std::ratio<1, 10'000'000>>;
    constexpr Ticks kTo1970 = std::chrono::seconds(11'644'473'600);
    const auto since1970 = std::chrono::system_clock::now().time_since_epoch();
    const Ticks ticks = kTo1970 + std::chrono::duration_cast<Ticks>(since1970);
    return {static_cast<std::uint64_t>(std::max(ticks, Ticks::zero()).count())};
  }

  /// Time since some fixed moment; never runs backwards. For durations.
  [[nodiscard]] virtual std::chrono::milliseconds Elapsed() const {
    return std::chrono::duration_cast<std::chrono::milliseconds>(
        std::chrono::steady_clock::now().time_since_epoch());
  }
};

}  // namespace gorbex
