#pragma once

#include "platform/clock.h"

namespace gorbex::test {

/// A clock that only moves when told to.
struct ManualClock : Clock {
  CivilTime now{2026, 3, 4, 15, 6, 7};
  std::chrono::milliseconds elapsed{0};

  [[nodiscard]] CivilTime LocalNow() const override { return now; }
  [[nodiscard]] std::chrono::milliseconds Elapsed() const override { return elapsed; }
};

}  // namespace gorbex::test
