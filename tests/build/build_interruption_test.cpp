#include <functional>

#include "tests/support/build_fixture.h"

namespace gorbex::test {
namespace {

const std::string kBase = Group::Path("Base");

class BuildInterruptionTest : public BuildFixture {
 protected:
  /// Lets the user act once, in the middle of the first compile.
  void DuringTheCompile(std::function<void()> act) {
    platform.events.onEvents = [this, act = std::move(act)] {
      const auto now = act;
      platform.events.onEvents = nullptr;
      now();
    };
  }
};

TEST_F(BuildInterruptionTest, OutlivesWhateverTheUserDoesDuringACompile) {
  frmBuilder& window = program.window;
  const std::string one = "show Built 1 components.";
  const std::string two = "show Built 2 components.";
  const Journal gone = {Reported(35601, "Element not found: '" + kBase + "'", kBuildProcedure),
                        Reported(35600, "Index out of bounds", kBuildProcedure), one};
  struct Case {
    std::function<void()> act;
    Journal told;
    std::string icons;
    std::size_t components;
  };
  const auto moveDown = [&] {
    window.lvwQueue.Select(&Row("Base"));
    window.menu.mnuQueueMoveDown.Execute();
  };
  const Case cases[] = {
      {moveDown, {two}, "vbproject buildok", 2},
      {[&] { window.menu.mnuQueueArrange.Execute(); }, {one}, "vbproject buildok", 1},
      {[&] { window.menu.mnuQueueUnMarkAll.Execute(); }, {one}, "buildok vbproject", 1},
      {[&] { window.ProjectMembers.Remove(kBase); }, {two}, "buildok buildok", 2},
      {[&] { window.menu.mnuQueueEmpty.Execute(); }, gone, "", 1},
      {[&] { window.menu.mnuFileNew.Execute(); }, gone, "", 1},
      {[&] { EXPECT_FALSE(window.menu.mnuFileBuild.Execute()); }, {two}, "buildok buildok", 2}};
  group.Library("Base").Uses("Core").Line("CompatibleMode=\"2\"");
  group.Library("Core").Line("CompatibleMode=\"2\"");
  for (const Case& c : cases) {
    SCOPED_TRACE(&c - cases);
    Load();
    DuringTheCompile(c.act);
    dialogs.answers = {Answer::Ignore, Answer::Ignore};
    const Journal steps = Build();
    EXPECT_EQ(Only(steps, {"show"}), c.told);
    EXPECT_EQ(Icons(), c.icons);
    EXPECT_EQ(CountOf(window.registrationScript, "Call KexrunTk.Execute("), c.components);
    EXPECT_TRUE(window.menu.mnuFileBuild.enabled.Get());
  }
}

TEST_F(BuildInterruptionTest, ReadsEachSettingWhenItIsNeeded) {
  group.Library("Core").Line("CompatibleMode=\"2\"").Line("OptimizationType=1");
  Load();
  program.options.DebugBuild = "True";
  DuringTheCompile([&] {
    program.options.DebugBuild = "False";
    program.options.StopProcessing = true;
  });
  failing = "Core";
  EXPECT_EQ(Only(Build(), {"show"}),
            Journal{"show [OkCancel CriticalStop] Error Building " + kCore + " Continue?"});
  EXPECT_NE(platform.files.Text(kCore).find("OptimizationType=2\r\n"), std::string::npos);
}

TEST_F(BuildInterruptionTest, WritesDebugValuesBackWhenAnErrorEndsTheRun) {
  group.Library("Core").Line("CompatibleMode=\"2\"").Line("OptimizationType=1");
  Load();
  program.options.DebugBuild = "True";
  DuringTheCompile([&] { program.window.menu.mnuQueueEmpty.Execute(); });
  dialogs.answers = {Answer::Abort};
  Build();
  EXPECT_NE(compiledSources.at(0).find("OptimizationType=2\r\n"), std::string::npos);
  EXPECT_NE(platform.files.Text(kCore).find("OptimizationType=1\r\n"), std::string::npos);
}

TEST_F(BuildInterruptionTest, SaysThatTheRunWasStopped) {
  group.Library("Base").Line("CompatibleMode=\"2\"");
  group.Library("Core").Uses("Base").Line("CompatibleMode=\"2\"");
  Load();
  program.options.StopProcessing = true;
  std::string counts;
  const Subscription ends = program.run.events.Connect([&](const RunEvent& event) {
    if (const auto* ended = std::get_if<RunEnded>(&event)) counts = CountsText(*ended, 2);
  });
  struct Case {
    std::function<void()> act;
    std::string fails, counts;
  };
  const Case cases[] = {
      {[&] { program.window.menu.mnuFileStop.Execute(); }, "", "stopped: 1 built, 1 not built"},
      {[] {}, "Base", "stopped: 0 built, 1 failed, 1 not built"},
      {[] {}, "Core", "1 built, 1 failed"},
      {[&] { Row("Core").SetChecked(false); }, "", "1 built, 1 not built"},
      {[&] { program.run.End(); }, "", "stopped: 0 built, 1 failed, 1 not built"}};
  platform.processes.polls = 10;
  for (const int jobs : {2, 1}) {
    program.options.Jobs = jobs;
    for (const Case& each : cases) {
      if (jobs == 2 && &each == std::end(cases) - 1) continue;  // nothing is started after it
      Row("Core").SetChecked(true);
      failing = each.fails;
      dialogs.answers = {Answer::Cancel};
      DuringTheCompile(each.act);
      Build();
      EXPECT_EQ(counts, each.counts) << jobs;
    }
  }
}

// What was told to end asks nobody, writes back what it replaced and starts nothing more.
TEST_F(BuildInterruptionTest, EndsInGoodOrderWhenTold) {
  group.Library("Base").Line("CompatibleMode=\"2\"").Line("OptimizationType=1");
  group.Library("Core").Line("CompatibleMode=\"2\"");
  Load();
  clsOptions& options = program.options;
  options.DebugBuild = "True";
  options.StopProcessing = options.AutoLaunchVBP = true;
  platform.processes.polls = 1000;
  DuringTheCompile([&] { program.run.End(); });
  const Journal steps = Build();
  EXPECT_EQ(Only(steps, {"start"}).size(), 1U);
  EXPECT_EQ(Only(steps, {"show"}), Journal{});
  EXPECT_EQ(program.failed.All().at(0).reason, "the compiler was ended before it was done");
  EXPECT_EQ(Icons(), "builderror vbproject");
  EXPECT_NE(platform.files.Text(kBase).find("OptimizationType=1\r\n"), std::string::npos);
  EXPECT_TRUE(program.window.menu.mnuFileBuild.enabled.Get());
  EXPECT_EQ(Only(Build(), {"start"}), Journal{}) << "and not a moment later";
}

TEST_F(BuildInterruptionTest, LeavesTheTestProjectToItsUserUntilAskedTwice) {
  Load({"Core"});
  frmBuilder& window = program.window;
  program.options.AutoLaunchVBP = true;
  std::vector<std::string> told;
  platform.processes.Queue([this](const std::string& command) { return CompileProject(command); });
  platform.processes.Queue([&](const std::string&) {
    for (int i = 0; i < 2; ++i) {
      window.menu.mnuFileStop.Execute();
      told.push_back(window.stbStatus.Get());
    }
    return 0U;
  });
  dialogs.answers = {Answer::Yes, Answer::No};
  const Journal steps = Build();
  const std::string status =
      "Nothing is stopped: the build is done, and the test project is running";
  EXPECT_EQ(told, (Journal{status, status}));
  EXPECT_EQ(Only(steps, {"show"}).back(),
            "show [YesNo Exclamation] The test project is still running. End it now?");
}

TEST_F(BuildInterruptionTest, LeavesItsTurnToAnotherProgram) {
  Load({"Core"});
  frmBuilder& window = program.window;
  std::weak_ptr<void> held;
  bool isFree = false;
  platform.turn = [&]() -> std::shared_ptr<void> {
    EXPECT_TRUE(held.expired()) << "a run and its compiles share one turn";
    if (!isFree) return nullptr;
    auto turn = std::make_shared<int>();
    held = turn;
    return turn;
  };
  program.options.Interval = 30;
  window.menu.mnuToolsInBox.Execute();
  platform.mail.received = {{.body = "BUILD,PRO " + kCore + ","}};
  window.tmrOutlook.elapsed.Emit();
  EXPECT_FALSE(program.compile.CompileProject(kCore, ""));
  EXPECT_EQ(Only(Build(), {"start", "mail", "status"}),
            (Journal{"mail open ", "status Another program is building; try again when it is done",
                     "status Another program is building; try again when it is done"}));
  EXPECT_TRUE(window.tmrOutlook.enabled.Get()) << "the request waits for the next look";
  isFree = true;
  Build();
  window.tmrOutlook.elapsed.Emit();
  EXPECT_EQ(compiledSources.size(), 2U);
  EXPECT_TRUE(held.expired()) << "others may build again";
}

const std::string kNote = "C:\\Program Files\\GorbexBuilder\\gorbexbuilder.replaced";

// The files of a run in the middle of a compile are what is left when it is killed there.
TEST_F(BuildInterruptionTest, IsPutRightByTheNextStartWhenItWasKilled) {
  group.Library("Core")
      .Line("CompatibleMode=\"2\"")
      .Line("OptimizationType=1")
      .Line("CodeViewDebugInfo=0");
  Load();
  program.options.DebugBuild = "True";
  std::string project, note;
  DuringTheCompile([&] {
    PlatformServices services = platform.Services();
    services.keepOthersOut = [](const auto&) { return nullptr; };
    Program other(services, dialogs);
    other.start.Form_Load();
    project = platform.files.Text(kCore);
    note = platform.files.Text(kNote);
  });
  Build();
  EXPECT_FALSE(platform.files.Look(kNote)) << "nothing is left to be done";
  ASSERT_NE(project.find("OptimizationType=2\r\nCodeViewDebugInfo=-1\r\n"), std::string::npos)
      << "it was not the other program's turn";

  platform.files.AddFile(kCore, project);
  platform.files.AddFile(kNote, note);
  Program next(platform.Services(), dialogs);
  next.start.Form_Load();
  const std::string told =
      "Wrote back the debug values of " + kCore + ", which a build that was killed had left";
  EXPECT_EQ(Only(Steps(), {"show Wrote"}), Journal{"show " + told});
  EXPECT_NE(platform.files.Text(next.log.FileOf(next.log.Today())).find(told), std::string::npos);
  EXPECT_NE(platform.files.Text(kCore).find("OptimizationType=1\r\nCodeViewDebugInfo=0\r\n"),
            std::string::npos);
  EXPECT_FALSE(platform.files.Look(kNote));
}

TEST_F(BuildInterruptionTest, WritesBackNothingButWhatTheKilledRunPutThere) {
  const std::string line = "OptimizationType\t1\t2\t" + kCore + "\tend\r\n";
  struct Case {
    std::string note, before, after;
    bool isReadOnly = false, staysNoted = false;
  };
  const Case cases[] = {{line, "2", "1"},
                        {line, "0", "0"},
                        {line, "22", "22"},
                        {line.substr(0, line.size() - 3), "2", "2"},
                        {"OptimizationType\t1" + line, "2", "2"},
                        {"OptimizationType\t\t2\t" + kCore + "\tend\r\n", "2", "2"},
                        {std::string(40, '\0') + line + line, "2", "1"},
                        {"OptimizationType\t1\t2\tC:\\Group\\Gone.vbp\tend\r\n" + line, "2", "1"},
                        {line, "2", "2", true, true}};
  for (const Case& c : cases) {
    SCOPED_TRACE(&c - cases);
    const std::string key = "Type=OleDll\r\nOptimizationType=";
    platform.files.AddFile(kCore, key + c.before);
    platform.files.SetAttributes(kCore, c.isReadOnly ? file_attribute::kReadOnly : 0);
    platform.files.AddFile(kNote, c.note);
    Program next(platform.Services(), dialogs);
    next.start.ReadState();
    EXPECT_EQ(platform.files.Text(kCore), key + c.after);
    EXPECT_EQ(platform.files.Look(kNote).has_value(), c.staysNoted);
  }
}

TEST_F(BuildInterruptionTest, NamesAProjectFileThatIsGoneAndGoesOn) {
  group.Library("Base").Line("CompatibleMode=\"2\"");
  group.Library("Core").Line("CompatibleMode=\"2\"");
  const std::string file = group.BuildProject();
  platform.files.Remove(kBase);
  program.options.VersionComponents = "1.2.3";
  ASSERT_TRUE(program.buildProject.LoadProject(file));
  program.window.buildDirectory = "C:\\Out\\";
  Steps();
  EXPECT_EQ(Only(Build(), {"show", "start"}).size(), 2U) << "one compile, and the end";
  EXPECT_EQ(Icons(), "builderror buildok");
  ASSERT_NE(program.failed.Find(kBase), nullptr);
  EXPECT_EQ(program.failed.Find(kBase)->reason, "File not found: '" + kBase + "'");
}

TEST_F(BuildInterruptionTest, FollowsTheAnswerToAnErrorReport) {
  const std::string report =
      Reported(5, "Invalid procedure call or argument: '" + kBase + "'", kBuildProcedure);
  Load({"Base", "Core"});
  program.window.menu.mnuToolsInBox.checked.Set(true);
  program.window.ProjectMembers.Remove(kBase);

  dialogs.answers = {Answer::Retry, Answer::Ignore};
  Journal steps = Build();
  EXPECT_EQ(Only(steps, {"show"}),
            (Journal{report, report, "show Errors during the build process"}));
  EXPECT_EQ(Icons(), "builderror buildok");

  RunEnded end{};
  const auto listening = program.run.events.Connect([&](const RunEvent& event) {
    if (const auto* ended = std::get_if<RunEnded>(&event)) end = *ended;
  });
  dialogs.answers = {Answer::Abort};
  steps = Build();
  EXPECT_EQ(Only(steps, {"show"}), Journal{report});
  EXPECT_EQ(end.result, RunResult::Aborted);
  EXPECT_EQ(end.built, 0) << "nothing was compiled";
  EXPECT_EQ(Icons(), "building vbproject");
  const frmBuilder& window = program.window;
  EXPECT_TRUE(window.menu.mnuFileBuild.IsPossible()) << "without a restart";
  EXPECT_FALSE(window.tmrOutlook.enabled.Get());
  EXPECT_TRUE(window.stbStatus.Get().ends_with("until Check Inbox is switched off and on"));
  EXPECT_EQ(window.mousePointer.Get(), MousePointer::Default);
  EXPECT_EQ(CountOf(window.registrationScript, "\r\n"), 3U);
}

}  // namespace
}  // namespace gorbex::test
