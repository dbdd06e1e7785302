#include "platform/linux/tool.h"

#include <gtest/gtest.h>

#include "tests/platform/temporary_folder.h"
#include "tests/support/recording_events.h"

namespace gorbex::test {
namespace {

class LinuxTools : public testing::Test {
 protected:
  ToolOutcome Run(const std::string& script, const std::string& folder = "C:\\") {
    return tools_.Run(
        {"sh", {"-c", script, "sh", "a  b", "$HOME"}, folder, {{"SET", "1"}, {"GONE", {}}}});
  }
  ErrorNumber ErrorOf(const ToolOutcome& outcome) { return std::get<RuntimeError>(outcome).Code(); }

  TemporaryFolder folder_;
  Prefix prefix_{folder_.Path()};
  RecordingEvents events_;
  LinuxToolRunner tools_{prefix_};
};

TEST_F(LinuxTools, TakeWhatIsSaidOnEachStream) {
  setenv("GONE", "here", 1);
  const auto result =
      std::get<ToolResult>(Run("printf '%s|' \"$@\" $SET $GONE; basename $PWD; ls /proc/$$/fd; "
                               "cat; echo e >&2; exit 7"));
  unsetenv("GONE");
  EXPECT_EQ(result.output, "a  b|$HOME|1|drive_c\n0\n1\n2\n");
  EXPECT_EQ(result.errorOutput, "e\n");
  EXPECT_EQ(result.exitCode, 7U);
}

TEST_F(LinuxTools, HaveNoTerminalToAskAt) {
  const auto result = std::get<ToolResult>(Run("cut -d' ' -f6 /proc/$$/stat; echo $$"));
  const auto half = result.output.size() / 2;
  EXPECT_EQ(result.output.substr(0, half), result.output.substr(half)) << "session and process";
}

TEST_F(LinuxTools, NeitherBlockOnMuchNorWaitForAHelperLeftBehind) {
  tools_.Handle(events_);
  const auto result = std::get<ToolResult>(
      Run("sleep 9 & head -c 3000000 /dev/zero >&2; head -c 3000000 /dev/zero; sleep 0.2"));
  EXPECT_EQ(result.output.size() + result.errorOutput.size(), 6'000'000U);
  EXPECT_GT(events_.count, 2);
  EXPECT_EQ(ErrorOf(Run("exec cat /dev/zero")), ErrorNumber::OutOfMemory);
  EXPECT_EQ(ErrorOf(Run("exit 0", "C:\\none")), ErrorNumber::PathNotFound);
}

TEST_F(LinuxTools, ReadWhatTheyAreGivenAndMayTakeTooLong) {
  ToolCall call{"/bin/cat", {}, "C:\\"};
  call.input = std::string(1'000'000, 'x') + '\0';
  EXPECT_EQ(std::get<ToolResult>(tools_.Run(call)).output, call.input);
  call = {"sleep", {"60"}, "C:\\"};
  call.patience = std::chrono::milliseconds(50);
  EXPECT_EQ(ErrorOf(tools_.Run(call)), ErrorNumber::InvalidCall);
  EXPECT_EQ(ErrorOf(tools_.Run({"/bin/none", {}, "C:\\"})), ErrorNumber::FileNotFound);
}

}  // namespace
}  // namespace gorbex::test
