#include "tests/faults/system_day.h"
#include "tests/faults/windows/wrapped_calls.h"

namespace gorbex::test {
namespace {

// Such files are written in place: a write that fails then must not cost the old text.
TEST(SystemFaults, LeaveFilesWholeThatOtherProgramsHold) {
  const HeldFiles held;
  ExpectWholeFilesAfter({{ERROR_DISK_FULL, Fault::Kind::ShortWrite}});
}

}  // namespace
}  // namespace gorbex::test
