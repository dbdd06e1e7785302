#include <gtest/gtest.h>

#include "system_bench.h"
#include "tests/support/recording_events.h"

namespace gorbex::test {
namespace {

struct SystemTools : testing::Test {
  ToolOutcome Run(std::vector<std::string> arguments) {
    return bench.tools.Run(
        {"chatty_tool", std::move(arguments), bench.folder, {{"SET", "1"}, {"GONE", {}}}});
  }
  static ErrorNumber ErrorOf(const ToolOutcome& outcome) {
    return std::get<RuntimeError>(outcome).Code();
  }

  ToolsOnSystem bench;
  RecordingEvents events;
};

TEST_F(SystemTools, TakeWhatIsSaidOnEachStream) {
  const Variable gone("GONE", "here");
  const auto result =
      std::get<ToolResult>(Run({"report", "a  b", "$HOME", "", "\\", "x \\\"y\\", "*", "%PATH%"}));
  EXPECT_EQ(result.output, "a  b|$HOME||\\|x \\\"y\\|*|%PATH%|1|<none>|" + bench.folderName + "|0");
  EXPECT_EQ(result.errorOutput, "e");
  EXPECT_EQ(result.exitCode, 7U);
}

TEST_F(SystemTools, NeitherBlockOnMuchNorWaitForAHelperLeftBehind) {
  bench.tools.Handle(events);
  const auto result = std::get<ToolResult>(Run({"much"}));
  EXPECT_EQ(result.output.size() + result.errorOutput.size(), 6'000'000U);
  EXPECT_GT(events.count, 2);
  const auto begin = std::chrono::steady_clock::now();
  EXPECT_EQ(std::get<ToolResult>(Run({"leave"})).exitCode, 0U);
  EXPECT_LT(std::chrono::steady_clock::now() - begin, std::chrono::seconds(3));
  EXPECT_EQ(ErrorOf(Run({"endless"})), ErrorNumber::OutOfMemory);
}

TEST_F(SystemTools, SayWhatIsMissing) {
  EXPECT_EQ(ErrorOf(bench.tools.Run({"no_such_tool", {}, bench.folder})),
            ErrorNumber::FileNotFound);
  EXPECT_EQ(ErrorOf(bench.tools.Run({"chatty_tool", {}, bench.folder + "\\none"})),
            ErrorNumber::PathNotFound);
}

}  // namespace
}  // namespace gorbex::test
