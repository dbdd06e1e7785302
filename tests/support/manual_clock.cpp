#include "tests/support/manual_clock.h"

namespace gorbex::test {

void ManualClock::Advance(std::chrono::milliseconds step) {
  constexpr std::uint64_t kTicksPerMillisecond = 10'000;
  elapsed += step;
  fileTime.ticks += static_cast<std::uint64_t>(step.count()) * kTicksPerMillisecond;
}

}  // namespace gorbex::test
