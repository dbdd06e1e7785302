#include "platform/linux/tool.h"

#include <gtest/gtest.h>

#include "system_bench.h"

namespace gorbex::test {
namespace {

TEST(LinuxTools, InheritNothingButTheirStreams) {
  ToolsOnSystem bench;
  // The fourth is the folder that is being listed.
  const auto result =
      std::get<ToolResult>(bench.tools.Run({"ls", {"/proc/self/fd"}, bench.folder}));
  EXPECT_EQ(result.output, "0\n1\n2\n3\n");
}

TEST(LinuxTools, HaveNoTerminalToAskAt) {
  ToolsOnSystem bench;
  const auto result = std::get<ToolResult>(
      bench.tools.Run({"sh", {"-c", "cut -d' ' -f6 /proc/$$/stat; echo $$"}, bench.folder}));
  const auto half = result.output.size() / 2;
  EXPECT_EQ(result.output.substr(0, half), result.output.substr(half)) << "session and process";
}

TEST(LinuxTools, ReadWhatTheyAreGivenAndMayTakeTooLong) {
  ToolsOnSystem bench;
  const auto errorOf = [](const ToolOutcome& outcome) {
    return std::get<RuntimeError>(outcome).Code();
  };
  ToolCall call{"/bin/cat", {}, "C:\\"};
  call.input = std::string(1'000'000, 'x') + '\0';
  EXPECT_EQ(std::get<ToolResult>(bench.tools.Run(call)).output, call.input);
  call = {"sleep", {"60"}, "C:\\"};
  call.patience = std::chrono::milliseconds(50);
  EXPECT_EQ(errorOf(bench.tools.Run(call)), ErrorNumber::InvalidCall);
  EXPECT_EQ(errorOf(bench.tools.Run({"/bin/none", {}, "C:\\"})), ErrorNumber::FileNotFound);
}

}  // namespace
}  // namespace gorbex::test
