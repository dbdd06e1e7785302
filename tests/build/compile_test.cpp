#include "tests/support/build_fixture.h"

namespace gorbex::test {
namespace {

constexpr const char* kUnreadable =
    "File not found: 'C:\\Program Files\\GorbexBuilder\\VBResult.log'";
constexpr const char* kCheckProcedure = ": frmBuilder.CheckLogFile";

using CompileTest = BuildFixture;

TEST_F(CompileTest, WritesTheCompilersCommandLine) {
  struct Case {
    std::string programFolder, buildDirectory, outDir, rest;
  };
  const Case cases[] = {
      {"C:\\Tools", "", "", "\"C:\\Tools\\VBResult.log\""},
      {"C:\\Tools", "C:\\Out\\", "", "\"C:\\Tools\\VBResult.log\" /outdir \"C:\\Out\\\""},
      {"D:\\", "C:\\Out\\", "E:\\My Own", "\"D:\\VBResult.log\" /outdir \"E:\\My Own\""}};
  Load({"Core"});
  program.window.compilerPath = "C:\\Program Files\\VB98\\VB6.EXE";
  for (const Case& c : cases) {
    program.window.buildDirectory = c.buildDirectory;
    Compile compile({program.window, platform.files, program.shell, program.dialogs, program.log,
                     program.compiler, program.work, program.freshness, c.programFolder});
    platform.files.AddFile(c.programFolder + "\\VBResult.log", "stale",
                           file_attribute::kReadOnly | file_attribute::kHidden);
    dialogs.answers = {Answer::Abort};
    platform.processes.QueueExitCode(0);
    EXPECT_FALSE(compile.CompileProject(kCore, c.outDir));
    EXPECT_EQ(Only(Steps(), {"start"}), Journal{"start C:\\Program Files\\VB98\\VB6.EXE \"" +
                                                kCore + "\" /make /out " + c.rest});
    EXPECT_EQ(platform.files.Text(c.programFolder + "\\VBResult.log"), "<absent>");
  }
}

TEST_F(CompileTest, BoundsTheWordsOfATalkativeCompiler) {
  Load({"Core"});
  platform.processes.Queue([this](const std::string&) {
    platform.files.AddFile(kResultLog, "a" + std::string(5'000'000, 'x') + "build of failed.");
    return 1U;
  });
  EXPECT_FALSE(program.compile.CompileProject(kCore, ""));
  const std::string& log = program.failed.All().at(0).log;
  EXPECT_TRUE(log.size() < 70'000 && log.starts_with("a") && log.ends_with("failed."));
}

TEST_F(CompileTest, FailsSilentlyWithoutACompileAndReportsAMissingLog) {
  Load({"Core"});
  platform.files.AddFile(kResultLog, "Build of 'Core.dll' succeeded.");
  platform.processes.QueueRefusal(RuntimeError(ErrorNumber::FileNotFound, kCompiler));
  EXPECT_FALSE(program.compile.CompileProject(kCore, ""));
  EXPECT_EQ(program.compile.LastProblem(), "File not found: 'C:\\VB\\VB6.EXE'");
  EXPECT_FALSE(program.compile.CompileProject("C:\\Other.vbp", ""));
  EXPECT_EQ(program.compile.LastProblem(), "File not found: 'C:\\Other.vbp'");
  clsMember odd;
  odd.path = "C:\\Core.vbp\\";
  program.window.ProjectMembers.Add(odd);
  EXPECT_FALSE(program.compile.CompileProject(odd.path, "")) << "its backslash hides the quote";
  EXPECT_TRUE(program.compile.LastProblem().starts_with("Bad file name"));
  EXPECT_TRUE(Only(Steps(), {"show", "log", "start"}).empty());

  platform.processes.QueueExitCode(0);
  dialogs.answers = {Answer::Retry, Answer::Ignore};
  EXPECT_FALSE(program.compile.CompileProject(kCore, ""));
  const std::string line = std::string("log Error 53: ") + kUnreadable +
                           "Occurred at line *in GorbexBuilder" + kCheckProcedure;
  const std::string report = Reported(53, kUnreadable, kCheckProcedure);
  EXPECT_EQ(Only(Steps(), {"log", "show"}), (Journal{line, report, line, report}));
  EXPECT_TRUE(program.compile.LastProblem().starts_with("the compiler wrote no result log"));
}

TEST_F(CompileTest, RemembersWhatFailedUntilItIsBuiltOrTheNextRun) {
  struct Case {
    const char *project, *log, *reason;
  };
  const Case cases[] = {
      {"Base", "\r\nSyntax error\r\nBuild of 'Base.dll' failed.\r\n", "Syntax error"},
      {"Core", "Component 'X.OCX' not correctly registered",
       "Component 'X.OCX' not correctly regi"},
      {"Mail", "\r\n", "the compiler wrote an empty result log"},
      {"Till", "Build of 'Till.dll' succeeded.", nullptr},
      {"User", nullptr, "File not found: 'C:\\VB\\VB6.EXE'"}};
  Load({"Base", "Core", "Mail", "Till", "User"});
  Journal reasons;
  for (const Case& c : cases) {
    if (c.reason != nullptr) reasons.push_back(Group::Path(c.project) + ": " + c.reason);
    if (c.log == nullptr) {
      platform.processes.QueueRefusal(RuntimeError(ErrorNumber::FileNotFound, kCompiler));
      continue;
    }
    platform.processes.Queue([this, &c](const std::string&) {
      platform.files.AddFile(kResultLog, c.log);
      return c.reason == nullptr ? 1U : 0U;  // the result log is judged, not the exit code
    });
  }
  const auto& failed = program.failed.All();
  Build();
  ASSERT_EQ(failed.size(), reasons.size());
  for (std::size_t i = 0; i < failed.size(); ++i) {
    const std::string told = failed[i].path + ": " + failed[i].reason;
    EXPECT_EQ(told.substr(0, reasons[i].size()), reasons[i]);
  }
  EXPECT_EQ(failed[0].log, cases[0].log);
  EXPECT_EQ(failed[3].Text(), Group::Path("User") + "\r\n" + std::string(22, '=') + "\r\n" +
                                  cases[4].reason + "\r\n");

  EXPECT_TRUE(program.compile.CompileProject(kCore, ""));
  EXPECT_EQ(failed.size(), 3U);
  EXPECT_EQ(failed[1].path, Group::Path("Mail"));
  Build();
  EXPECT_TRUE(failed.empty());
}

TEST_F(CompileTest, BuildsWhatFailedOnceMoreAndKeepsTheMarks) {
  group.Library("Base").Line("CompatibleMode=\"2\"");
  group.Library("Core").Uses("Base").Line("CompatibleMode=\"2\"");
  group.Library("Else").Line("CompatibleMode=\"2\"");
  group.Library("Top").Uses("Core").Line("CompatibleMode=\"2\"");
  Load();
  program.options.SkipUsersOfFailed = true;
  failing = "Base";
  EXPECT_EQ(Only(Build(), {"start"}).size(), 2U);
  const auto& failed = program.failed;
  ASSERT_EQ(failed.All().size(), 3U);
  EXPECT_EQ(failed.Find(Group::Path("Top"))->reason,
            "Not built: it uses " + Group::Path("Base") + ", which failed");
  EXPECT_EQ(failed.Find(Group::Path("Else")), nullptr);

  failing = "";
  Row("Top").SetChecked(false);
  bool marksChange = false;
  const auto listening = program.run.events.Connect(
      [&](const RunEvent&) { marksChange = marksChange || Row("Top").Checked(); });
  program.window.menu.mnuQueueBuildFailed.Execute();
  EXPECT_FALSE(marksChange);
  EXPECT_EQ(Row("Else").Icon(), Image::BuildOk) << "not a row of this run";
  const Journal started = Only(Steps(), {"start"});
  ASSERT_EQ(started.size(), 3U);
  EXPECT_NE(started[2].find(Group::Path("Top")), std::string::npos);
  EXPECT_TRUE(failed.All().empty());
  EXPECT_TRUE(Row("Else").Checked() && !Row("Top").Checked());
}

}  // namespace
}  // namespace gorbex::test
