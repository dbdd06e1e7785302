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

  int scans = 0;
  const auto scanned = program.marking.marked.Connect([&] { ++scans; });
  list.Select(&list.At(1));
  platform.processes.QueueExitCode(0);
  menu.mnuDataPopupReg.Execute();
  EXPECT_EQ(scans, 1) << "other projects may reference it, too";
  EXPECT_EQ(Effects(), Journal{"start RegSvr32 /s \"" + core + "\""});
  EXPECT_EQ(list.Selected(), &list.At(1)) << "judged again, still selected";

  platform.processes.QueueExitCode(5);
  menu.mnuDataPopupUnReg.Execute();
  EXPECT_EQ(Effects(),
            (Journal{"start RegSvr32 -u /s \"" + core + "\"", "show Failed to Register " + core}));

  EXPECT_EQ(program.window.stbStatus.Get(), "ask an administrator");

  list.Select(nullptr);
  dialogs.answers = {Answer::Ignore};
  menu.mnuDataPopupReg.Execute();
  EXPECT_EQ(Effects(), Journal{Reported(91, "Object variable or With block variable not set",
                                        ": frmBuilder.mnuDataPopupReg_Click")});
}

const std::string kLacks = "Object doesn't support this property or method: ";
const std::string kNotSet = "Object variable or With block variable not set";

class ComponentTestTest : public ProgramFixture {
 protected:
  ComponentTestTest() {
    auto& core = group.Library("Core").Line("Class=Guard; Sub\\Guard.CLS").Line("Form=f.cls");
    core.Line("UserControl=Dial.ctl").Line("Class=Odd; Odd.cls;x").Line("UserControl=No.ctlx");
    group.Library("Plain");
    program.buildProject.LoadProject(group.BuildProject());
    platform.objects.values = {{"Core.Guard", ""}, {"Core.GuardName", "old"}, {"Core.Dial", ""}};
    Open("Core");
  }

  Journal Open(const std::string& project) {
    Effects();
    program.window.lvwQueue.Select(program.window.lvwQueue.Find(Group::Path(project)));
    program.window.menu.mnuQueueTest.Execute();
    return Effects();
  }

  Journal Test(std::size_t entry) {
    form.cboComponents.selected.Set(entry);
    form.cmdTest.Execute();
    return Effects();
  }

  frmSelectControl& form = program.selectControl;
  frmTestControl& host = program.testControl;
};

TEST_F(ComponentTestTest, ListsClassesAndUserControls) {
  EXPECT_EQ(form.cboComponents.items.Get(),
            (std::vector<std::string>{"(o) Core.Guard", "(u) Core.Dial", "(o) Core.Odd"}));
  EXPECT_EQ(Open("Plain"), Journal{});
  EXPECT_TRUE(form.visible.Get() && form.cboComponents.items.Get().empty());
  EXPECT_EQ(Test(0), Journal{});
  EXPECT_EQ(Open("None"), Journal{Reported(91, kNotSet, ": frmBuilder.mnuQueueTest_Click")});
}

TEST_F(ComponentTestTest, AnnouncesEveryStepOfAClass) {
  const std::string lacks = "show error " + kLacks + "'Nome'";
  const std::tuple<const char*, const char*, Journal> cases[] = {
      {"", "new", {}},
      {"Name", "  ", {"show property Name got value old"}},
      {"Name", " x", {"show property Name set to value  x", "show property Name got value  x"}},
      {"Nome", "x", {lacks, lacks}},
  };
  for (auto [property, value, steps] : cases) {
    form.txtProperty.text.Set(property);
    form.txtValue.text.Set(value);
    steps.insert(steps.begin(), {"create Core.Guard", "show object created Core.Guard"});
    steps.emplace_back("destroy Core.Guard");
    EXPECT_EQ(Test(0), steps);
  }
  const std::string unset = "show error " + kNotSet;
  const auto* refused = "show error ActiveX component can't create object: 'Core.Odd'";
  EXPECT_EQ(Test(2), (Journal{"create Core.Odd", refused, unset, unset}));
}

TEST_F(ComponentTestTest, HostsUserControlsAndResizesTheLast) {
  const auto sized = host.visible.changed.Connect([&](bool) { host.clientSize.width = 300; });
  const Journal added = {"license Core.Dial", "create Core.Dial", "size Core.Dial 300"};
  EXPECT_EQ(Test(1), added);
  EXPECT_EQ(Test(1), added);
  HostedControl& last = *host.Controls().at(1);
  EXPECT_EQ(host.Controls()[0]->name + last.name, "ChildControl0ChildControl1");
  host.clientSize.width = 90;
  program.componentTest.frmTestControl_Form_Resize();
  EXPECT_EQ(Effects(), Journal{"size Core.Dial 90"});
  const auto painting = last.repaint.Connect([&] { last.Paint({}); });
  platform.objects.repaint();
  EXPECT_EQ(last.problem.Get(), kLacks + "'Picture'");
  form.cmdClose.Execute();
  EXPECT_EQ(Effects(), (Journal{"destroy Core.Dial", "destroy Core.Dial"}));
  EXPECT_FALSE(host.visible.Get() || form.visible.Get());
  EXPECT_EQ(platform.objects.letGo, 1) << "the component can be built again";
  platform.processes.otherwise = [&](const std::string&) {
    EXPECT_EQ(platform.objects.letGo, 2) << "whatever was tested since";
    return 0U;
  };
  EXPECT_TRUE(program.registration.Unregister("C:\\c.dll"));
}

TEST_F(ComponentTestTest, LetsItsFormsBeClosedWhileAMessageIsShown) {
  const auto closing = program.dialogs.answered.Connect(
      [&](const Message&, Answer) { program.componentTest.frmSelectControl_Form_Unload(); });
  Test(1);
  EXPECT_EQ(Test(0), (Journal{"create Core.Guard", "show object created Core.Guard",
                              "destroy Core.Dial", "destroy Core.Guard"}));
  Test(1);
  platform.objects.values.clear();
  dialogs.answers = {Answer::Retry};
  program.componentTest.frmTestControl_Form_Resize();
  const auto report = Reported(438, kLacks + "'Size'", ": frmTestControl.Form_Resize");
  EXPECT_EQ(Effects(), (Journal{"size Core.Dial 0", report, "destroy Core.Dial"}));
  Test(1);
  EXPECT_FALSE(host.visible.Get());
}

}  // namespace
}  // namespace gorbex::test
