#include <gtest/gtest.h>

#include "platform/windows/handle.h"
#include "variable.h"

namespace gorbex::test {
namespace {

TEST(EndSignals, AreNotedAndEndAWait) {
  for (const char* what : {"", " session"}) {
    STARTUPINFOW start{};
    start.cb = sizeof(start);
    PROCESS_INFORMATION made{};
    auto program = ToWide("\"" + WindowsPath(END_LISTENER) + "\"" + what);
    ASSERT_TRUE(CreateProcessW(nullptr, program.data(), nullptr, nullptr, FALSE, 0, nullptr,
                               nullptr, &start, &made));
    const Handle process(made.hProcess);
    const Handle thread(made.hThread);
    EXPECT_EQ(WaitForSingleObject(process.Get(), 20'000), WAIT_OBJECT_0);
    DWORD code = 0;
    GetExitCodeProcess(process.Get(), &code);
    EXPECT_EQ(code, 3U) << what;
  }
}

}  // namespace
}  // namespace gorbex::test
