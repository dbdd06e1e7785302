#include "platform/linux/process.h"

#include <gtest/gtest.h>

#include <csignal>

#include "tests/platform/temporary_folder.h"
#include "tests/support/scripted_processes.h"

namespace gorbex::test {
namespace {

namespace fs = std::filesystem;
using namespace std::chrono_literals;

constexpr const char* kProgramFolder = "C:\\Program Files\\GorbexBuilder";

struct InMemory {
  Journal journal;
  ManualClock clock;
  ScriptedProcesses launcher{journal, clock};

  std::string Ending(std::uint32_t code) {
    launcher.QueueExitCode(code);
    return "tool";
  }
  std::string Absent() {
    launcher.QueueRefusal(RuntimeError(ErrorNumber::FileNotFound, "none"));
    return "none";
  }
};

struct OnLinux {
  TemporaryFolder folder;
  Prefix prefix{folder.Path()};
  int ended = 0;
  LinuxProcessLauncher launcher{prefix, kProgramFolder, [this] { ++ended; }};
  std::string tool = prefix.WindowsPath(DUMP_ARGUMENTS);
  std::string out = (folder.Path() / "dump").native();

  std::string Ending(int code) { return "\"" + tool + "\" " + out + " " + std::to_string(code); }
  std::string Absent() { return "\"C:\\no such\\tool.exe\" x"; }
  std::string ErrorOf(const std::string& commandLine) {
    const auto error = std::get<RuntimeError>(launcher.Start(commandLine));
    return std::to_string(error.Number()) + " " + error.Description();
  }
};

std::uint32_t CodeOf(ProcessLauncher& launcher, const std::string& commandLine) {
  const auto process = std::get<0>(launcher.Start(commandLine));
  const auto code = process->ExitCode(10s);
  EXPECT_EQ(process->ExitCode(0ms), code);
  return code.value();
}

template <typename Bench>
class Processes : public testing::Test {
 protected:
  Bench bench_;
};

using Benches = testing::Types<InMemory, OnLinux>;
TYPED_TEST_SUITE(Processes, Benches);

TYPED_TEST(Processes, TellNotStartedFromEndedBadly) {
  EXPECT_EQ(CodeOf(this->bench_.launcher, this->bench_.Ending(0)), 0U);
  EXPECT_EQ(CodeOf(this->bench_.launcher, this->bench_.Ending(7)), 7U);
  const auto result = this->bench_.launcher.Start(this->bench_.Absent());
  ASSERT_TRUE(std::holds_alternative<RuntimeError>(result));
  EXPECT_EQ(std::get<RuntimeError>(result).Code(), ErrorNumber::FileNotFound);
}

TEST(LinuxProcesses, HandOverArgumentsAsTheyWereMeant) {
  OnLinux bench;
  const std::string arguments = " a \"b  c\" \"\" \"C:\\O u t\\\\\" x\\\"y \xE9 $HOME `id` * ;";
  EXPECT_EQ(CodeOf(bench.launcher, bench.Ending(3) + arguments), 3U);
  EXPECT_EQ(bench.folder.Get("dump"),
            "[a][b  c][][C:\\O u t\\][x\"y][\u00E9][$HOME][`id`][*][;]\n" +
                bench.folder.Path().native() + "\n0");
  EXPECT_EQ(bench.ended, 1);
  EXPECT_EQ(CodeOf(bench.launcher, bench.Ending(-SIGTERM)), 128U + SIGTERM);
}

TEST(LinuxProcesses, FindProgramsByTheSystemsRules) {
  OnLinux bench;
  const auto drive = bench.folder.Path() / "drive_c";
  for (const char* place : {"Two Words/My Tool.exe", "windows/system32/inSystem", "both.exe"}) {
    fs::create_directories((drive / place).parent_path());
    fs::copy_file(DUMP_ARGUMENTS, drive / place);
  }
  fs::copy_file(DUMP_ARGUMENTS, drive / "Program Files/GorbexBuilder/own.exe");
  const auto rest = " " + bench.out + " 4";
  for (const char* program : {"C:\\Two Words\\My Tool", "c:\\two words\\MY TOOL.EXE", "INSYSTEM",
                              "own", "\"own.exe\"", "\\both"}) {
    EXPECT_EQ(CodeOf(bench.launcher, program + rest), 4U) << program;
  }
  EXPECT_EQ(CodeOf(bench.launcher, "true"), 0U);
}

TEST(LinuxProcesses, SayWhatCannotRun) {
  OnLinux bench;
  bench.folder.Put("drive_c/notes.txt", "no program");
  bench.folder.Put("drive_c/win.exe", "MZ");
  bench.folder.Put("drive_c/Old.com", "MZ");
  EXPECT_TRUE(bench.ErrorOf("C:\\notes.txt").starts_with("5 "));
  EXPECT_EQ(bench.ErrorOf(""), "53 File not found");
  EXPECT_EQ(bench.ErrorOf("C:\\Program Files"), "53 File not found: 'C:\\Program'");
  const char* before = std::getenv("PATH");
  const std::string path = before != nullptr ? before : "";
  setenv("PATH", bench.folder.Path().c_str(), 1);
  EXPECT_EQ(bench.ErrorOf("C:\\win /make"),
            "53 File not found: 'wine', which is needed to run 'C:\\win.exe'");
  fs::copy_file(DUMP_ARGUMENTS, bench.folder.Path() / "wine");
  bench.folder.Put("system.reg", "");
  // The stand-in for Wine takes the Windows program's path for the name of its output file.
  const CurrentFolder inside(bench.folder.Path());
  EXPECT_EQ(CodeOf(bench.launcher, "C:\\old.com 6 \"x y\""), 6U);
  setenv("PATH", path.c_str(), 1);
  EXPECT_TRUE(bench.folder.Get("C:\\old.com").starts_with("[x y]\n"));
}

TEST(LinuxProcesses, AreWaitedForNoLongerThanAsked) {
  OnLinux bench;
  auto result = bench.launcher.Start("sleep 3");
  auto& process = std::get<std::unique_ptr<Process>>(result);
  const auto begin = std::chrono::steady_clock::now();
  EXPECT_FALSE(process->ExitCode(0ms));
  EXPECT_FALSE(process->ExitCode(30ms));
  EXPECT_GE(std::chrono::steady_clock::now() - begin, 30ms);
  EXPECT_EQ(bench.ended, 0);
}

}  // namespace
}  // namespace gorbex::test
