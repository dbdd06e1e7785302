#include "app/offered_commands.h"

#include "tests/support/build_fixture.h"

namespace gorbex::test {
namespace {

class OfferedCommandsTest : public BuildFixture {
 protected:
  /// The watched commands that a user can run now.
  [[nodiscard]] std::string Offered() {
    MainMenu& menu = program.window.menu;
    std::string names;
    for (const Command* command :
         {&menu.mnuFileNew, &menu.mnuFileBuild, &menu.mnuToolsBuildOptions, &menu.mnuQueueAdd,
          &menu.mnuQueueAddAll, &menu.mnuQueueArrange, &menu.mnuQueueRemove, &menu.mnuQueueMarkAll,
          &menu.mnuQueueMarkUses, &menu.mnuQueueMarkFailed, &menu.mnuQueueBuild,
          &menu.mnuQueueBuildFailed, &menu.mnuQueueWhyFailed, &menu.mnuWindowFailed,
          &menu.mnuTreePopupRemoveProject, &menu.mnuTreePopupBuildNowDefault,
          &menu.mnuToolsMissing}) {
      if (command->IsPossible()) names.append(names.empty() ? "" : " ").append(command->Name());
    }
    return names;
  }
};

TEST_F(OfferedCommandsTest, FollowTheSelectionTheFailuresAndWhatIsAtWork) {
  EXPECT_EQ(Offered(), "mnuFileNew mnuFileBuild mnuToolsBuildOptions");
  Load({"Base", "Core"});
  frmBuilder& window = program.window;
  window.lvwQueue.Select(nullptr);
  window.tvwProjects.Select(nullptr);
  const std::string loaded =
      "mnuFileNew mnuFileBuild mnuToolsBuildOptions mnuQueueAddAll mnuQueueArrange mnuQueueMarkAll "
      "mnuToolsMissing";
  EXPECT_EQ(Offered(), loaded);
  window.lvwQueue.Select(&Row("Core"));
  EXPECT_EQ(Offered(),
            "mnuFileNew mnuFileBuild mnuToolsBuildOptions mnuQueueAddAll mnuQueueArrange "
            "mnuQueueRemove mnuQueueMarkAll "
            "mnuQueueMarkUses mnuQueueBuild mnuToolsMissing");
  window.lvwQueue.Select(nullptr);
  window.tvwProjects.Select(window.tvwProjects.Find("x)" + kCore));
  EXPECT_EQ(Offered(),
            "mnuFileNew mnuFileBuild mnuToolsBuildOptions mnuQueueAdd mnuQueueAddAll "
            "mnuQueueArrange mnuQueueMarkAll "
            "mnuTreePopupRemoveProject mnuTreePopupBuildNowDefault mnuToolsMissing");
  window.tvwProjects.Select(nullptr);

  failing = "Core";
  std::string whileItRuns;
  const auto listening = program.run.events.Connect([&](const RunEvent& event) {
    if (std::holds_alternative<ProjectStarted>(event)) whileItRuns = Offered();
  });
  Build();
  EXPECT_EQ(whileItRuns, "mnuQueueMarkAll mnuToolsMissing");
  const std::string failed =
      "mnuFileNew mnuFileBuild mnuToolsBuildOptions mnuQueueAddAll mnuQueueArrange mnuQueueMarkAll "
      "mnuQueueMarkFailed "
      "mnuQueueBuildFailed mnuWindowFailed mnuToolsMissing";
  EXPECT_EQ(Offered(), failed);
  for (const char* name : {"Base", "Core"}) {
    window.lvwQueue.Select(&Row(name));
    EXPECT_EQ(window.menu.mnuQueueWhyFailed.IsPossible(), std::string(name) == "Core");
  }
  failing = "";
  window.menu.mnuQueueBuildFailed.Execute();
  window.lvwQueue.Select(nullptr);
  EXPECT_EQ(Offered(), loaded);
}

TEST_F(OfferedCommandsTest, LeaveRegisteredComponentsAloneWhileACompilerRuns) {
  group.Library("Base").Line("CompatibleMode=\"2\"");
  group.Library("Core").Uses("Base").Line("CompatibleMode=\"2\"");
  Load();
  program.display.ShowProjectReferences(kCore);
  ListView& references = program.window.lvwData;
  references.Select(&references.At(1));
  const Command& registering = program.window.menu.mnuDataPopupReg;
  EXPECT_TRUE(registering.IsPossible());
  int compilers = 0;
  const auto listening = program.shell.starting.Connect([&] {
    ++compilers;
    EXPECT_FALSE(registering.IsPossible());
  });
  Build();
  EXPECT_EQ(compilers, 2);
}

}  // namespace
}  // namespace gorbex::test
