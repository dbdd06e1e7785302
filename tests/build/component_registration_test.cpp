#include "tests/support/program_fixture.h"

namespace gorbex::test {
namespace {

using ComponentRegistrationTest = ProgramFixture;

TEST_F(ComponentRegistrationTest, RunsTheToolOnTheSelectedComponent) {
  group.Library("Core");
  const std::string app = group.Executable("App").Uses("Core").Path();
  ASSERT_TRUE(program.buildProject.LoadProject(group.BuildProject()));
  program.display.ShowProjectReferences(app);
  ListView& list = program.window.lvwData;
  MainMenu& menu = program.window.menu;
  const std::string core = "c:\\group\\bin\\core.dll";
  Effects();

  list.Select(&list.At(1));
  platform.processes.QueueExitCode(0);
  menu.mnuDataPopupReg.Execute();
  EXPECT_EQ(Effects(), Journal{"start RegSvr32 /s \"" + core + "\""});
  EXPECT_EQ(list.Selected(), &list.At(1)) << "judged again, still selected";

  platform.processes.QueueExitCode(5);
  menu.mnuDataPopupUnReg.Execute();
  EXPECT_EQ(Effects(),
            (Journal{"start RegSvr32 -u /s \"" + core + "\"", "show Failed to Register " + core}));

  list.Select(nullptr);
  dialogs.answers = {Answer::Ignore};
  menu.mnuDataPopupReg.Execute();
  EXPECT_EQ(Effects(), Journal{Reported(91, "Object variable or With block variable not set",
                                        ": frmBuilder.mnuDataPopupReg_Click")});
}

}  // namespace
}  // namespace gorbex::test
