#include "core/reference_value.h"
#include "tests/support/program_fixture.h"

namespace gorbex::test {
namespace {

class ReferenceMarkingTest : public ProgramFixture {
 protected:
  ReferenceMarkingTest() {
    platform.registry.AddKey(kClasses, "TypeLib");
    platform.registry.AddText(kClasses, "TypeLib\\{A}\\1.0\\0\\win32", "", "C:\\Lib\\A.dll");
    platform.registry.AddText(kClasses, "TypeLib\\{GONE}\\1.0\\0\\win32", "", "C:\\Lib\\Gone.dll");
    platform.files.AddFile("C:\\Lib\\A.dll", "");
  }
  static constexpr auto kClasses = RegistryRoot::ClassesRoot;
  const std::string invalid = "invalidreference|Invalid GUID|";
  const std::string noPath = "invalidreference|No Path for this GUID in registry|";
};

TEST(ReferenceValue, PartsAreFoundOrMissing) {
  using Row = std::array<std::string, 3>;
  for (const Row& row : {Row{"*\\G{A}#1#0#C:\\a#d", "{A}", "C:\\a"}, Row{"abc{1-2#0#; x ", "", "x"},
                         Row{"x{A}y{B}#0#0; a;b ", "{A}", "a;b"}, Row{"}{A}#0#0", "{A}", ""},
                         Row{"*\\A..\\o.vbp", "", "error"}, Row{"{A}#1", "{A}", "error"},
                         Row{"", "", "error"}, Row{"*\\###x", "", "x"}}) {
    EXPECT_EQ(GetGUID(row[0]), row[1]) << row[0];
    try {
      EXPECT_EQ(ComponentPath(row[0]), row[2]) << row[0];
    } catch (const RuntimeError& error) {
      EXPECT_EQ(std::to_string(error.Number()) + row[2], "9error") << row[0];
    }
  }
}

TEST_F(ReferenceMarkingTest, VerdictFollowsRegistryAndFiles) {
  using Row = std::array<std::string, 4>;
  const std::string ok = "vbreference|Reference OK|c:\\lib\\a.dll";
  const std::string differ = "checkreference|Project & Registry Paths Differ|c:\\lib\\a.dll";
  for (const Row& row : {Row{"{A}", "1.0", "c:\\LIB\\a.DLL", ok},
                         Row{"{a}", "1.0", "C:\\Lib\\A.dll", ok}, Row{"{A}", "1.0", "", differ},
                         Row{"{A}", "1.0", "A.dll", differ}, Row{"{A}", "1", "A.dll", noPath},
                         Row{"{GONE}", "1.0", "C:\\Lib\\Gone.dll", noPath + "c:\\lib\\gone.dll"},
                         Row{"{B}", "1.0", "", invalid}, Row{"", "1.0", "", noPath}}) {
    const auto [image, text, path] = program.references.RefType(row[0], row[1], row[2]);
    EXPECT_EQ(std::string(ImageKey(image)) + "|" + text + "|" + path, row[3]) << row[0] << row[2];
  }
  EXPECT_EQ(program.references.GetRefComponent("{A}#1"), "");
  EXPECT_EQ(program.references.GUIDChanged("*\\G{A}#1"), "");
  EXPECT_EQ(Effects(),
            Journal{Reported(9, "Subscript out of range", ": frmBuilder.GetRefComponent")});
}

TEST_F(ReferenceMarkingTest, ListRowsShowFieldsVerdictAndColour) {
  auto& core = group.Library("Core");
  program.reader.ReadProject(core.Path());
  const TreeNode& heading = program.window.tvwProjects.Item("r)" + core.Path());
  const std::string other = group.Library("Other").Path();
  program.reader.ReadProject(other);
  auto& list = program.window.lvwData;
  list.SetTag(core.Path());
  using Row = std::array<std::string, 2>;
  for (const Row& row :
       {Row{"*\\G{A}#1.0#0#C:\\Lib\\A.dll#Text",
            "{A}|1.0|C:\\Lib\\A.dll|c:\\lib\\a.dll|Text|"
            "Reference OK| vbreference"},
        Row{"*\\G{Q}#1#0#C:\\x\\MYOTHER.DLL",
            "{Q}|1|C:\\x\\MYOTHER.DLL|||Dependant on other "
            "project in group| dependancy"},
        Row{"*\\a..\\o.vbp#2", "*\\a..\\o.vbp|2||||| dependancy"},
        Row{"{A}#1.0#0",
            "{A}|1.0||c:\\lib\\a.dll||Project & Registry Paths Differ| checkreference"},
        Row{"*\\G{B}#1#0#C:\\Group\\Bin\\Core.dll",
            "{B}|1|C:\\Group\\Bin\\Core.dll|||Invalid GUID| "
            "invalidreference grey expanded"},
        Row{"*\\AOther.vbp",
            "|||||No Path for this GUID in registry| invalidreference grey expanded"},
        Row{"", "|||||No Path for this GUID in registry| invalidreference grey expanded"}}) {
    list.Clear();
    program.marking.ShowReferenceRow(row[0]);
    const ListRow& shown = list.At(1);
    std::string text = shown.Text() + "|";
    for (std::size_t column = 1; column <= 5; ++column) text += shown.SubItem(column) + "|";
    text.append(" ").append(ImageKey(shown.Icon()));
    if (shown.TextColour() == Colour::ButtonShadow) text += " grey";
    if (heading.Expanded() && heading.Parent()->Expanded()) text += " expanded";
    EXPECT_EQ(text, row[1]) << row[0];
  }
  EXPECT_EQ(Effects(), Journal{}) << "errors are passed over";
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
  EXPECT_EQ(find("C:\\core.dll", ""), "p3");
  add("p2", "Core.dll");
  EXPECT_EQ(find("C:\\core.dll", ""), "p3");
  members.Clear();
  EXPECT_EQ(find("C:\\core.dll" + longName, ""), "");
}

TEST_F(ReferenceMarkingTest, MarkingGrowsWithTheNumberOfReferences) {
  const auto scan = [&](int projects) {
    program.window.ClearBuildProject();
    for (int n = 0; n < projects; ++n) {
      std::string text = "ExeName32=Lib" + std::to_string(n) + ".dll\r\n";
      for (int r = 1; r <= 30; ++r) {
        const auto used = std::to_string((n * 31 + r * 17) % projects);
        text += "Reference=*\\G{A}#1.0#0#C:\\Bin\\Lib" + used + (r % 2 == 0 ? ".dll" : ".ocx") +
                "#\r\n";
      }
      const std::string path = "C:\\G\\" + std::to_string(n) + ".vbp";
      platform.files.AddFile(path, text);
      EXPECT_TRUE(program.reader.ReadProject(path));
    }
    auto best = std::chrono::steady_clock::duration::max();
    for (int repeat = 0; repeat < 2; ++repeat) {
      const auto start = std::chrono::steady_clock::now();
      program.window.menu.mnuToolsDependancies.Execute();
      best = std::min(best, std::chrono::steady_clock::now() - start);
    }
    return static_cast<int>(std::chrono::duration_cast<std::chrono::microseconds>(best).count());
  };
  const int small = scan(500);
  const int large = scan(2000);
  RecordProperty("microseconds for 2000", large);
  EXPECT_LT(large, 8 * small) << small;
}

}  // namespace
}  // namespace gorbex::test
