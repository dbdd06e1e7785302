#include <gtest/gtest.h>

#include <fcntl.h>
#include <pty.h>

#include <csignal>

#include "platform/linux/process.h"
#include "platform/linux/tool.h"
#include "system_bench.h"

namespace gorbex::test {
namespace {

namespace fs = std::filesystem;

TEST(LinuxProcesses, TellThePrefixAndAnnounceTheirEndOnce) {
  ProcessesOnSystem bench;
  EXPECT_EQ(CodeOf(bench.launcher, bench.Ending(3)), 3U);
  EXPECT_EQ(bench.Dump(), "\n" + bench.folder.Path().native() + "\n0");
  EXPECT_EQ(bench.ended, 1);
  EXPECT_EQ(CodeOf(bench.launcher, bench.Ending(-SIGTERM)), 128U + SIGTERM);
}

TEST(LinuxProcesses, FindProgramsInTheSystemFolderAndWithoutADrive) {
  ProcessesOnSystem bench;
  bench.Install("C:\\windows\\system32\\inSystem");
  bench.Install("C:\\both.exe");
  for (const char* program : {"INSYSTEM", "\\both"}) {
    EXPECT_EQ(CodeOf(bench.launcher, program + (" " + bench.out + " 4")), 4U) << program;
  }
}

TEST(LinuxProcesses, TellWhyAProgramMayNotRun) {
  ProcessesOnSystem bench;
  bench.folder.Put("editor", "text");
  const auto result = bench.launcher.StartProgram((bench.folder.Path() / "editor").native(), {});
  EXPECT_NE(std::get<RuntimeError>(result).Description().find("Permission denied"),
            std::string::npos);
}

TEST(LinuxProcesses, RunWindowsProgramsUnderWine) {
  ProcessesOnSystem bench;
  bench.folder.Put("drive_c/win.exe", "MZ");
  bench.folder.Put("drive_c/Old.com", "MZ");
  const Variable path("PATH", bench.folder.Path().native());
  EXPECT_EQ(ErrorOf(bench.launcher, "C:\\win /make"),
            "53 File not found: 'wine', which is needed to run 'C:\\win.exe'");
  fs::copy_file(DUMP_ARGUMENTS, bench.folder.Path() / "wine");
  bench.folder.Put(".update-timestamp", "");
  // The stand-in for Wine takes the Windows program's path for the name of its output file.
  const CurrentFolder inside(bench.folder.Path());
  EXPECT_EQ(CodeOf(bench.launcher, "C:\\old.com 6 \"x y\""), 6U);
  EXPECT_TRUE(bench.folder.Get("C:\\old.com").starts_with("[x y]\n"));
}

TEST(LinuxProcesses, WriteNothingToATerminal) {
  ProcessesOnSystem bench;
  int terminal = -1;
  int end = -1;
  ASSERT_EQ(openpty(&terminal, &end, nullptr, nullptr, nullptr), 0);
  const int kept = dup(STDERR_FILENO);
  dup2(end, STDERR_FILENO);
  const auto result = bench.launcher.StartProgram("/bin/echo", {"debris"});
  const auto code = std::get<std::unique_ptr<Process>>(result)->ExitCode(std::chrono::seconds(10));
  dup2(kept, STDERR_FILENO);
  EXPECT_EQ(code, 0U);
  fcntl(terminal, F_SETFL, O_NONBLOCK);
  char byte = 0;
  EXPECT_EQ(read(terminal, &byte, 1), -1) << byte;
  for (const int each : {terminal, end, kept}) close(each);
}

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

TEST(LinuxTools, ReadWhatTheyAreGiven) {
  ToolsOnSystem bench;
  ToolCall call{"/bin/cat", {}, "C:\\"};
  call.input = std::string(1'000'000, 'x') + '\0';
  EXPECT_EQ(std::get<ToolResult>(bench.tools.Run(call)).output, call.input);
}

}  // namespace
}  // namespace gorbex::test
