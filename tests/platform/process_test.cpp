#include <gtest/gtest.h>

#include "system_bench.h"
#include "tests/support/recording_events.h"

namespace gorbex::test {
namespace {

using namespace std::chrono_literals;

TEST(SystemProcesses, TellNotStartedFromEndedBadly) {
  ProcessesOnSystem bench;
  for (const int code : {0, 7}) {
    EXPECT_EQ(CodeOf(bench.launcher, bench.Ending(code)), static_cast<std::uint32_t>(code));
  }
  EXPECT_EQ(CodeOf(bench.launcher, bench.Ending(259)) & 0xFFU, 259U & 0xFFU);
  EXPECT_TRUE(ErrorOf(bench.launcher, bench.Absent()).starts_with("53 "));
}

TEST(SystemProcesses, HandOverArgumentsAsTheyWereMeantAndNothingToRead) {
  ProcessesOnSystem bench;
  const std::string arguments = " a \"b  c\" \"\" \"C:\\O u t\\\\\" x\\\"y \xE9 $HOME `id` * ;";
  EXPECT_EQ(CodeOf(bench.launcher, bench.Ending(3) + arguments), 3U);
  const auto dump = bench.Dump();
  EXPECT_EQ(dump.substr(0, dump.find('\n')),
            "[a][b  c][][C:\\O u t\\][x\"y][" + bench.Told("\xE9") + "][$HOME][`id`][*][;]");
  EXPECT_TRUE(dump.ends_with("\n0"));
}

TEST(SystemProcesses, FindProgramsByTheSystemsRules) {
  ProcessesOnSystem bench;
  bench.Install(bench.root + "Two Words\\My Tool.exe");
  bench.Install(bench.programFolder + "\\own.exe");
  for (const auto& program :
       {bench.root + "Two Words\\My Tool", bench.root + "two words\\MY TOOL.EXE",
        std::string("own"), std::string("\"own.exe\"")}) {
    EXPECT_EQ(CodeOf(bench.launcher, program + " " + bench.out + " 4"), 4U) << program;
  }
  EXPECT_EQ(CodeOf(bench.launcher, bench.InPath()), 0U);
  EXPECT_EQ(CodeOf(bench.launcher, bench.SystemsOwn("cmd", 6)), 6U) << "nobody is put before it";
}

TEST(SystemProcesses, GetEachArgumentAsItIs) {
  ProcessesOnSystem bench;
  const std::string program = bench.root + "Two Words\\My Tool.exe";
  bench.Install(program);
  auto result = bench.launcher.StartProgram(
      program, {bench.out, "5", "a b\" c", "x\\", "", "$(id) & %PATH%", "C:\\O u t\\"});
  ASSERT_TRUE(std::holds_alternative<std::unique_ptr<Process>>(result));
  EXPECT_EQ(std::get<std::unique_ptr<Process>>(result)->ExitCode(10s), 5U);
  const auto dump = bench.Dump();
  EXPECT_EQ(dump.substr(0, dump.find('\n')), "[a b\" c][x\\][][$(id) & %PATH%][C:\\O u t\\]");
  result = bench.launcher.StartProgram(bench.root + "none.exe", {});
  EXPECT_TRUE(std::holds_alternative<RuntimeError>(result));
}

TEST(SystemProcesses, SayWhatCannotRun) {
  ProcessesOnSystem bench;
  bench.files.Write(bench.root + "notes.txt", "no program");
  EXPECT_TRUE(ErrorOf(bench.launcher, bench.root + "notes.txt").starts_with("5 "));
  EXPECT_EQ(ErrorOf(bench.launcher, ""), "53 File not found");
  EXPECT_EQ(ErrorOf(bench.launcher, bench.root + "Two Words"),
            "53 File not found: '" + bench.root + "Two'");
}

TEST(SystemProcesses, AreWaitedForNoLongerThanAskedAndEndWhenTold) {
  ProcessesOnSystem bench;
  auto result = bench.launcher.Start(bench.Sleeping());
  auto& process = std::get<std::unique_ptr<Process>>(result);
  const auto begin = std::chrono::steady_clock::now();
  EXPECT_FALSE(process->ExitCode(0ms));
  EXPECT_FALSE(process->ExitCode(30ms));
  EXPECT_GE(std::chrono::steady_clock::now() - begin, 30ms);
  process->Terminate();
  EXPECT_NE(process->ExitCode(10s).value_or(0), 0U);
  EXPECT_LT(std::chrono::steady_clock::now() - begin, 3s);
}

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

TEST_F(SystemTools, AreEndedWithWhatTheyStarted) {
  EXPECT_EQ(ErrorOf(bench.tools.Run({.program = "chatty_tool",
                                     .arguments = {"stay"},
                                     .folder = bench.folder,
                                     .patience = 1500ms})),
            ErrorNumber::InvalidCall);
  const auto ticks = std::filesystem::path(bench.root.Path()) / bench.ticks;
  const auto before = std::filesystem::file_size(ticks);
  EXPECT_GT(before, 0U);
  std::this_thread::sleep_for(200ms);
  EXPECT_EQ(std::filesystem::file_size(ticks), before);
}

TEST_F(SystemTools, DoNotStartWhenTheProgramIsAboutToEnd) {
  struct EndWanted : EventPump {
    void DoEvents() override { throw RuntimeError(ErrorNumber::AutomationError); }
  } end;
  bench.tools.Handle(end);
  EXPECT_THROW(static_cast<void>(Run({"stay"})), RuntimeError);
  EXPECT_FALSE(std::filesystem::exists(std::filesystem::path(bench.root.Path()) / bench.ticks));
}

TEST_F(SystemTools, SayWhatIsMissing) {
  EXPECT_EQ(ErrorOf(bench.tools.Run({"no_such_tool", {}, bench.folder})),
            ErrorNumber::FileNotFound);
  EXPECT_EQ(ErrorOf(bench.tools.Run({"chatty_tool", {}, bench.folder + "\\none"})),
            ErrorNumber::PathNotFound);
}

}  // namespace
}  // namespace gorbex::test
