#include "tests/faults/system_day.h"

namespace gorbex::test {
namespace {

// Such files are written in place: a write that fails then must not cost the old text.
TEST(SystemFaults, LeaveFilesWholeThatOtherProgramsHold) {
  areFilesHeld = true;
  ExpectWholeFilesAfter({{ERROR_DISK_FULL, Fault::Kind::ShortWrite}});
  areFilesHeld = false;
}

}  // namespace
}  // namespace gorbex::test
