#include "tests/support/build_fixture.h"

namespace gorbex::test {
namespace {

class ImmediateBuildTest : public BuildFixture {
 protected:
  ImmediateBuildTest() { Load({"Base", "Core"}); }
  Journal Run(Command& entry) {
    window.tvwProjects.Select(window.tvwProjects.Find("x)" + kCore));
    window.lvwQueue.Select(&Row("Core"));
    entry.Execute();
    return Only(Steps(),
                {"status", "folder", "start", "icon", "text box shown", "enabled", "show"});
  }
  frmBuilder& window = program.window;
  MainMenu& menu = window.menu;
  Command& here = menu.mnuTreePopupBuildNowDefault;
  Command& elsewhere = menu.mnuTreePopupBuildNowNewLocation;
};

TEST_F(ImmediateBuildTest, TellsAndRecordsWhatCameOfIt) {
  const std::string start = std::string("start ") + kCompiler + " \"" + kCore + "\" /make /out \"" +
                            kResultLog + "\" /outdir \"";
  const std::string out = start + "C:\\Out\\\"";
  const std::string folder = "folder Please specify a destination path";
  const std::string status = "status Building " + kCore;
  const std::string shown = "text box shown True";
  const std::string script = "enabled mnuFileGenScript True";
  const std::string built = "show Built Core.dll successfully.";
  failing = "Core";
  EXPECT_EQ(Run(here), (Journal{status, out, shown, "show Errors during the build process"}));
  EXPECT_EQ(CountOf(window.registrationScript, "\r\n"), 3U);
  EXPECT_EQ(Run(menu.mnuQueueBuild), (Journal{out, "icon " + kCore + " builderror", shown,
                                              "show Failed to build component"}));
  failing.clear();
  EXPECT_EQ(Run(here), (Journal{status, out, script, built}));
  EXPECT_EQ(CountOf(window.registrationScript, "RegSvr32 C:\\Out\\Core.dll\""), 1U);
  dialogs.choices = {"D:\\New", std::nullopt, "", "D:\\"};
  EXPECT_EQ(Run(elsewhere), (Journal{folder, status, start + "D:\\New\\\"", script, built}));
  const Journal cancelled = {folder, "status Build Cancelled"};
  for (int i = 0; i < 3; ++i) EXPECT_EQ(Run(elsewhere), cancelled);
  EXPECT_EQ(Run(menu.mnuQueueBuild),
            (Journal{out, "icon " + kCore + " buildok", "show Component built succesfully"}));
  window.compilerPath.clear();
  EXPECT_EQ(Run(here).front(), "show You need to specify a VB path");
  EXPECT_EQ(CountOf(window.registrationScript, "RegSvr32 D:\\New\\Core.dll\""), 1U);
  EXPECT_EQ(CountOf(window.registrationScript, "\r\n"), 6U);
}

TEST_F(ImmediateBuildTest, OutlivesWhateverTheUserDoesDuringTheCompile) {
  const std::string gone =
      Reported(35601, "Element not found: '" + kCore + "'", ": frmBuilder.mnuQueueBuild_Click");
  const std::string built = "show Component built succesfully";
  for (Command* act : {&menu.mnuFileNew, &menu.mnuQueueArrange, &menu.mnuTreePopupRemoveProject}) {
    for (Command* entry : {&here, &menu.mnuQueueBuild}) {
      Load();
      platform.processes.Queue([&](const std::string& commandLine) {
        act->Execute();
        return CompileProject(commandLine);
      });
      const std::string told = act == &menu.mnuFileNew ? gone : built;
      EXPECT_EQ(Run(*entry).back(), entry == &here ? "show Built Core.dll successfully." : told);
    }
  }
}

TEST_F(ImmediateBuildTest, IsRefusedWhileAnotherProjectIsCompiled) {
  platform.processes.polls = 1;
  bool asked = false;
  platform.events.onEvents = [&] {
    if (std::exchange(asked, true)) return;
    for (Command* entry : {&here, &elsewhere, &menu.mnuQueueBuild}) {
      EXPECT_EQ(Run(*entry).back(), "status Another project is being compiled");
    }
    program.run.mnuFileBuild_Click();
    EXPECT_EQ(Only(Steps(), {"start", "log"}), Journal{});
  };
  Run(here);
  EXPECT_TRUE(asked);
  EXPECT_EQ(compiledSources.size(), 1U);
  EXPECT_FALSE(program.work.Goes(Task::Compile));
}

TEST_F(ImmediateBuildTest, SpoilsNothingOfWhoeverElseBuilds) {
  const auto listening = program.log.written.Connect([&](const std::string& line) {
    if (line != "Build was Succesfull") return;
    for (Command* entry : {&here, &menu.mnuQueueBuild}) {
      EXPECT_EQ(Run(*entry).back(), "status Another project is being compiled") << "in a run";
    }
  });
  program.run.mnuFileBuild_Click();
  Steps();
  EXPECT_EQ(CountOf(window.registrationScript, "\r\n"), 7U);
  platform.turn = [] { return nullptr; };
  for (Command* entry : {&here, &elsewhere, &menu.mnuQueueBuild}) {
    EXPECT_EQ(Run(*entry),
              Journal{"status Another program is building; try again when it is done"});
  }
  EXPECT_EQ(CountOf(window.registrationScript, "\r\n"), 7U);
  EXPECT_EQ(compiledSources.size(), 2U);
}

}  // namespace
}  // namespace gorbex::test
