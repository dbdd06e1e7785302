#include "platform/linux/clock.h"

#include <gtest/gtest.h>

#include "tests/platform/linux/variable.h"

namespace gorbex::test {
namespace {

TEST(LinuxClocks, FollowAChangeOfTheTimeZone) {
  const LinuxClock clock;
  int hours[2]{};
  {
    const Variable zone("TZ", "EAST-6");
    hours[0] = clock.LocalNow().hour;
  }
  {
    const Variable zone("TZ", "WEST+6");
    hours[1] = clock.LocalNow().hour;
  }
  const int apart = (hours[0] - hours[1] + 24) % 24;
  EXPECT_TRUE(apart == 12 || apart == 11) << "or an hour ended between the two";
}

}  // namespace
}  // namespace gorbex::test
