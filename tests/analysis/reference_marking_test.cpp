#include "analysis/missing_components.h"
#include "core/reference_value.h"
#include "tests/support/program_fixture.h"

namespace gorbex::test {
namespace {

class ReferenceMarkingTest : public ProgramFixture {
 protected:
  ReferenceMarkingTest() {
    constexpr auto kClasses = RegistryRoot::ClassesRoot;
    platform.registry.AddText(kClasses, "TypeLib\\{A}\\1.0\\0\\win32", "", "C:\\Lib\\A.dll");
    platform.registry.AddText(kClasses, "TypeLib\\{GONE}\\1.0\\0\\win32", "", "C:\\Lib\\Gone.dll");
    platform.files.AddFile("C:\\Lib\\A.dll", "");
  }
};

TEST(ReferenceValue, PartsAreFoundOrMissing) {
  using Row = std::array<std::string, 4>;
  for (const Row& row :
       {Row{"*\\G{A}#1#0#C:\\a#d", "{A}", "C:\\a", "d"}, Row{"abc{1-2#0#; x ", "", "x", "x"},
        Row{"x{A}y{B}#0#0; a;b ", "{A}", "a;b", "b"}, Row{"}{A}#0#0", "{A}", "", "0"},
        Row{"*\\A..\\o.vbp", "", "error", "o.vbp"}, Row{"{A}#1", "{A}", "error", "1"},
        Row{"", "", "error", ""}, Row{"*\\###x", "", "x", "x"},
        Row{"*\\G{A}#1#0#..\\b.dll# ", "{A}", "..\\b.dll", "b.dll"}}) {
    EXPECT_EQ(GetGUID(row[0]), row[1]) << row[0];
    EXPECT_EQ(ReferenceTitle(row[0]), row[3]) << row[0];
    try {
      EXPECT_EQ(ComponentPath(row[0]), row[2]) << row[0];
    } catch (const RuntimeError& error) {
      EXPECT_EQ(std::to_string(error.Number()) + row[2], "9error") << row[0];
    }
  }
}

TEST_F(ReferenceMarkingTest, ListRowsShowFieldsVerdictAndColour) {
  auto& core = group.Library("Core");
  program.reader.ReadProject(core.Path());
  const TreeNode& heading = program.window.tvwProjects.Item("r)" + core.Path());
  const std::string other = group.Library("Other").Path();
  program.reader.ReadProject(other);
  auto& list = program.window.lvwData;
  list.SetTag(core.Path());
  const std::string noPath = "|No Path for this GUID in registry| invalidreference grey expanded";
  const std::pair<std::string, std::string> cases[] = {
      {"*\\G{A}#1.0#0#C:\\LIB\\A.dll#Text",
       "{A}|1.0|C:\\LIB\\A.dll|c:\\lib\\a.dll|Text|Reference OK| vbreference"},
      {"*\\G{Q}#1#0#C:\\x\\MYOTHER.DLL",
       "{Q}|1|C:\\x\\MYOTHER.DLL|||Dependant on other project in group| dependancy"},
      {"*\\a..\\o.vbp#2", "*\\a..\\o.vbp|2||||| dependancy"},
      {"{A}#1.0#0", "{A}|1.0||c:\\lib\\a.dll||Project & Registry Paths Differ| checkreference"},
      {"*\\G{a}#1.0#0#A.dll",
       "{a}|1.0|A.dll|c:\\lib\\a.dll||Project & Registry Paths Differ| checkreference"},
      {"*\\G{GONE}#1.0#0#C:\\Lib\\Gone.dll",
       "{GONE}|1.0|C:\\Lib\\Gone.dll|c:\\lib\\gone.dll|" + noPath},
      {"*\\G{A}#1#0#A.dll", "{A}|1|A.dll||" + noPath},
      {"*\\G{B}#1#0#C:\\Group\\Bin\\Core.dll",
       "{B}|1|C:\\Group\\Bin\\Core.dll|||Invalid GUID| invalidreference grey expanded"},
      {"*\\AOther.vbp", "||||" + noPath},
      {"", "||||" + noPath}};
  for (const auto& [reference, row] : cases) {
    list.Clear();
    program.marking.ShowReferenceRow(reference);
    const ListRow& shown = list.At(1);
    std::string text = shown.Text() + "|";
    for (std::size_t column = 1; column <= 5; ++column) text += shown.SubItem(column) + "|";
    text.append(" ").append(ImageKey(shown.Icon()));
    if (shown.TextColour() == Colour::ButtonShadow) text += " grey";
    if (heading.Expanded() && heading.Parent()->Expanded()) text += " expanded";
    EXPECT_EQ(text, row) << reference;
  }
  EXPECT_EQ(Effects(), Journal{}) << "errors are passed over";
  EXPECT_EQ(program.references.GetRefComponent("{A}#1"), "");
  EXPECT_EQ(Effects(),
            Journal{Reported(9, "Subscript out of range", ": frmBuilder.GetRefComponent")});
}

TEST_F(ReferenceMarkingTest, TreeMarksOwnBinaryAsDependantAndListDoesNot) {
  auto& core = group.Library("Core");
  core.Uses("Core").Line("Reference=*\\aOther.vbp").Line("Object={A}#1.0#0; C:\\Lib\\A.dll");
  program.buildProject.LoadProject(group.BuildProject());
  Effects();
  std::string marks;
  for (const std::string key : {"r-1", "r-2", "o-1"}) {
    const TreeNode& node = program.window.tvwProjects.Item(key + core.Path());
    marks.append(ImageKey(node.ImageOf())).append(node.Checked() ? " checked" : "");
    marks += node.TextColour() == Colour::ButtonShadow ? " grey, " : ", ";
  }
  EXPECT_EQ(marks, "dependancy, invalidreference checked grey, vbreference checked, ");
  std::string icons;
  for (const auto& row : program.window.lvwData.Rows())
    icons.append(ImageKey(row->Icon())).append(" ");
  EXPECT_EQ(icons, "invalidreference dependancy vbreference ");
}

TEST_F(ReferenceMarkingTest, MissingComponentsAreGatheredFromTheMarks) {
  group.Library("Core").Uses("Core").Line("Object={ocx}#2.0#0; GRID.OCX").Line("Reference=broken");
  group.Library("Fine")
      .Line("Reference=*\\G{A}#1.0#0#C:\\Lib\\A.dll#A")
      .Line("Object={A}#1.0#0; a");
  group.Library("Late")
      .Line("Reference=*\\G{OCX}#2.0#0#..\\GRID.OCX#Grid Control")
      .Line("Object={OCX}#2.0#0; Grid.ocx")
      .Line("Reference=*\\AOther.vbp")
      .Line("Reference=*\\G{OCX}#3.0#0#C:\\x\\Grid3.ocx#")
      .Line("Reference=*\\G{GONE}#1.0#0#C:\\Lib\\Gone.dll#Gone");
  program.buildProject.LoadProject(group.BuildProject());
  platform.registry.AddText(RegistryRoot::ClassesRoot, "TypeLib\\{OCX}\\2.0\\0\\win32", "", "x");
  std::string text;
  for (const MissingComponent& missing : MissingComponents(program.window)) {
    text += missing.name + "|" + missing.guid + "|" + missing.version + "|" + missing.file + "|" +
            missing.verdict + "|";
    for (const auto& use : missing.uses) text += " " + use.project.substr(9) + " " + use.reference;
    text += "\n";
  }
  EXPECT_EQ(text,
            "GRID.OCX|{ocx}|2.0|GRID.OCX|Invalid GUID| Core\\Core.vbp {ocx}#2.0#0; GRID.OCX "
            "Late\\Late.vbp *\\G{OCX}#2.0#0#..\\GRID.OCX#Grid Control\n"
            "broken||||No Path for this GUID in registry| Core\\Core.vbp broken\n"
            "Gone|{GONE}|1.0|C:\\Lib\\Gone.dll|No Path for this GUID in registry| "
            "Late\\Late.vbp *\\G{GONE}#1.0#0#C:\\Lib\\Gone.dll#Gone\n"
            "Grid3.ocx|{OCX}|3.0|C:\\x\\Grid3.ocx|Invalid GUID| "
            "Late\\Late.vbp *\\G{OCX}#3.0#0#C:\\x\\Grid3.ocx#\n");
}

// Everything of the window that reading projects and judging their references changes.
std::string Shown(const frmBuilder& window) {
  std::string text = window.lblFilename.Get() + "|" + window.tvwProjects.Selected()->Key() + "\n";
  for (const TreeNode* node : NodesOf(window.tvwProjects)) {
    text.append(node->Key()).append("|").append(node->Tag()).append("|");
    text.append(ImageKey(node->ImageOf())).append(node->Checked() ? " checked" : "");
    text.append(node->TextColour() == Colour::ButtonShadow ? " grey" : "");
    text.append(node->Expanded() ? " expanded\n" : "\n");
  }
  for (const auto& row : window.lvwData.Rows()) text += row->Text() + "|" + row->SubItem(5) + "\n";
  return text;
}

// Reading one by one opens "Forward", whose neighbour is then not read yet.
TEST_F(ReferenceMarkingTest, LoadingMarksWhenAllAreReadAndAnAbortedOneNothing) {
  const std::string registered = "Reference=*\\G{A}#1.0#0#C:\\Lib\\A.dll#";
  group.Library("Forward").Uses("Later").Line(registered);
  group.Library("Own").Uses("Own").Line("Object={A}#1.0#0; C:\\Lib\\A.dll");
  group.Library("Fine").Line(registered).Line("Reference=*\\aOther.vbp");
  group.Library("Later").Uses("Own").Line("Object={GONE}#1.0#0; Gone.dll");
  const std::string last = group.Library("Last").Uses("Later").Path();
  ASSERT_TRUE(program.buildProject.LoadProject(group.BuildProject()));
  const std::string loaded = Shown(program.window);
  program.window.ClearBuildProject();
  for (const std::string name : {"Forward", "Own", "Fine", "Later", "Last"}) {
    program.reader.ReadProject(Group::Path(name));
  }
  program.window.menu.mnuToolsDependancies.Execute();
  TreeNode& forward = program.window.tvwProjects.Item("x)" + Group::Path("Forward"));
  EXPECT_TRUE(forward.Expanded() && forward.Children().front()->Expanded());
  forward.SetExpanded(false);
  forward.Children().front()->SetExpanded(false);
  EXPECT_EQ(loaded, Shown(program.window));

  dialogs.answers = {Answer::Abort};
  ASSERT_FALSE(program.buildProject.LoadProject(group.BuildProject({"changerefs=x"})));
  const std::string aborted = Shown(program.window);
  EXPECT_TRUE(aborted.starts_with(last + "|x)" + last + "\n"));
  for (const char* mark : {" checked", "|dependancy", " grey", " expanded"}) {
    EXPECT_EQ(aborted.find(mark, aborted.find("\nx)")), std::string::npos) << mark;
  }
  EXPECT_EQ(program.window.lvwData.Count(), 1U);
}

TEST_F(ReferenceMarkingTest, FirstLoadedProjectWinsAndRemovedOnesAreForgotten) {
  auto& members = program.window.ProjectMembers;
  const auto add = [&](const std::string& path, const std::string& exe) {
    clsMember member;
    member.path = path;
    member.EXEName = exe;
    members.Add(member);
  };
  const std::string longName(300, 'n');
  add("p1", "xCore.dll");
  add("p2", "CORE.dll");
  add("p3", "core.DLL");
  add("p4", "");
  add("p5", longName);
  const auto find = [&](const std::string& component, const std::string& project) {
    return program.group.FindGroupDependency(component, project);
  };
  EXPECT_EQ(find("C:\\mycore.dll.old", ""), "p2");
  EXPECT_EQ(find("C:\\core.dll", "p2"), "p3");
  EXPECT_EQ(find("C:\\core.dll", "P2"), "p2") << "the project is compared exactly";
  EXPECT_EQ(find("C:\\core.dll\\xcore.dll", ""), "p1");
  EXPECT_EQ(find("core.dl", "") + find("", ""), "");
  EXPECT_EQ(find("x" + longName, "p2"), "p5");
  members.Remove("p2");
  add("p2", "Core.dll");
  EXPECT_EQ(find("C:\\core.dll", ""), "p3");
  members.Clear();
  EXPECT_EQ(find("C:\\core.dll" + longName, ""), "");
}

}  // namespace
}  // namespace gorbex::test
