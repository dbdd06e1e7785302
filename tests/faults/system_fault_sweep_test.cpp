#include "tests/faults/system_day.h"

namespace gorbex::test {
namespace {

TEST(SystemFaults, LeaveEveryFileWholeAndTheProgramReady) {
  EXPECT_GT(SystemDay(0, {}).count, 400);
  for (const auto& faults : kSweeps) ExpectWholeFilesAfter(faults);
}

}  // namespace
}  // namespace gorbex::test
