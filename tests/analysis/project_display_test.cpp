#include "analysis/project_display.h"

#include <map>

#include "analysis/pointed_item.h"
#include "tests/support/program_fixture.h"

namespace gorbex::test {
namespace {

class ProjectDisplayTest : public ProgramFixture {
 protected:
  ProjectDisplayTest() {
    core.Line("Reference=*\\G{A}#1#0#x#").Line("Object={B}#1#0; y").Line("Form=f").Line("Class=c");
    core.Line("Title=t").Line("CompatibleEXE32=o.dll").Line("MajorVer=1");
    bare = "C:\\bare.vbp";
    platform.files.AddFile(bare, "");
    program.reader.ReadProject(core.Path());
    program.reader.ReadProject(bare);
  }
  std::string Labels() {
    auto& w = program.window;
    return w.lblFilename.Get() + "|" + w.lblProjectName.Get() + "|" + w.lblVersion.Get() + "|" +
           w.lblBinary.Get() + "|" + w.lblCompatability.Get() + "|" + w.lvwData.Tag();
  }
  void Show(const std::string& key) {
    program.display.ShowProjectDetails(program.window.tvwProjects.Item(key));
  }

  GroupProject& core = group.Library("Core");
  std::string bare;
};

TEST_F(ProjectDisplayTest, NodesLeadToTheirProjectOrShowNothing) {
  const std::string shown = core.Path() + "|Core|1..|C:\\Group\\Bin\\Core.dll|o.dll|" + core.Path();
  const std::string other = bare + "|<no name>|..|<not specified>|<none set>|" + bare;
  for (const std::string prefix : {"x)", "r)", "r-1", "o)", "o-1", "m)", "m-1", "i)"}) {
    Show("x)" + bare);
    Show(prefix + core.Path());
    EXPECT_EQ(Labels(), shown) << prefix;
  }
  Show("x)" + bare);
  for (const std::string& key : {std::string("root"), "u-1" + core.Path(), "i1" + core.Path()}) {
    Show(key);
    EXPECT_EQ(Labels(), other) << key;
  }
  EXPECT_EQ(Effects(), Journal{});
  program.window.ProjectMembers.Remove(core.Path());
  Show("r-1" + core.Path());
  EXPECT_EQ(Labels(), other);
  EXPECT_EQ(Effects(),
            Journal{Reported(5, "Invalid procedure call or argument: '" + core.Path() + "'",
                             ": frmBuilder.ShowProjectReferences")});
}

TEST_F(ProjectDisplayTest, ListIsFilledAgainOnlyForAnotherProjectOrOnRefresh) {
  ListView& list = program.window.lvwData;
  Show("x)" + core.Path());
  EXPECT_EQ(list.Count(), 2U);
  EXPECT_EQ(list.At(1).SubItem(5), "Invalid GUID");
  platform.registry.CreateKey(RegistryRoot::ClassesRoot, "TypeLib\\{A}");
  Effects();
  Show("r-1" + core.Path());
  Show("o-1" + core.Path());
  EXPECT_EQ(list.At(1).SubItem(5), "Invalid GUID");
  program.display.RefreshReferences();
  EXPECT_EQ(list.At(1).SubItem(5), "No Path for this GUID in registry");
  Show("x)" + bare);
  EXPECT_EQ(list.Count(), 0U);
  EXPECT_EQ(Effects(), Journal{});
}

TEST_F(ProjectDisplayTest, WhatIsPointedAtHasAFileAndAnIdentity) {
  auto& app = group.Executable("App").Line("Reference=*\\G{A}#1#0#..\\Bin\\a.dll#A");
  app.Line("Object={C}#1.0#0; c.ocx").Line("Reference=*\\ACore.vbp").Line("Class=K; k.cls");
  const std::string path = app.Path();
  platform.registry.AddText(RegistryRoot::ClassesRoot, "TypeLib\\{C}\\1.0\\0\\win32", "",
                            "C:\\Lib\\C.ocx");
  program.reader.ReadProject(path);
  const std::string home = path.substr(0, path.rfind('\\') + 1);
  const auto pointed = [&](const std::string& key) {
    const TreeNode& node = program.window.tvwProjects.Item(key);
    const auto item = PointedNode(node, program.references);
    return item.path + "|" + item.guid;
  };
  const std::string registered = "c:\\lib\\c.ocx|{C}";
  const std::string relative = "C:\\Group\\Bin\\a.dll|{A}";
  for (const auto& [key, item] :
       std::map<std::string, std::string>{{"root", "|"},
                                          {"x)" + path, path + "|"},
                                          {"o)" + path, path + "|"},
                                          {"r-1" + path, relative},
                                          {"r-2" + path, home + "Core.vbp|"},
                                          {"o-1" + path, registered},
                                          {"u-1" + path, home + "k.cls|"},
                                          {"r-1" + core.Path(), "|{A}"}}) {
    EXPECT_EQ(pointed(key), item) << key;
  }
  const ListView& list = program.window.lvwData;
  const auto third = PointedReference(list.At(3), path);
  EXPECT_EQ(third.path + "|" + third.guid, "c:\\lib\\c.ocx|{c}");
}

TEST_F(ProjectDisplayTest, PopUpCommandsAddAndRemoveProjects) {
  auto& window = program.window;
  window.menu.mnuTreePopupAddProject.Execute();
  EXPECT_FALSE(window.ProjectChanged) << "cancelled";
  EXPECT_EQ(Effects(), Journal{"open Select a VB Project to add to the list|VB Project Files "
                               "(*.vbp)|*.vbp|*.vbp"});
  std::string status;
  const auto listening =
      window.stbStatus.changed.Connect([&](const std::string& text) { status += text + "|"; });
  auto& app = group.Executable("App").Uses("Core");
  platform.files.AddFile("C:\\second.vbp", "Name=\"Second\"\r\n");
  dialogs.choices = {"C:\\gone.vbp", app.Path() + "|C:\\gone.vbp|C:\\second.vbp"};
  std::string told;
  const auto hearing =
      program.findings.told.Connect([&](const std::string& text) { told += text; });
  window.menu.mnuTreePopupAddProject.Execute();
  EXPECT_EQ(status,
            "Re-Checking references|Scanning dependancies, please wait.|"
            "Dependancy scan now complete.|Project Loaded|");
  EXPECT_NE(std::exchange(told, "").find("C:\\gone.vbp: "), std::string::npos);
  window.menu.mnuTreePopupAddProject.Execute();
  EXPECT_TRUE(window.ProjectChanged);
  EXPECT_NE(told.find("C:\\gone.vbp: "), std::string::npos) << "the others are added all the same";
  EXPECT_TRUE(window.ProjectMembers.Contains("C:\\second.vbp"));
  const TreeNode& reference = window.tvwProjects.Item("r-1" + app.Path());
  EXPECT_EQ(ImageKey(reference.ImageOf()), "dependancy");

  window.ProjectChanged = false;
  window.tvwProjects.Select(&window.tvwProjects.Item("x)" + core.Path()));
  const auto nodes = NodesOf(window.tvwProjects).size();
  window.menu.mnuTreePopupRemoveProject.Execute();
  EXPECT_EQ(ImageKey(reference.ImageOf()), "invalidreference") << "marked again";
  EXPECT_EQ(NodesOf(window.tvwProjects).size(), nodes - 10);
  EXPECT_EQ(window.tvwProjects.Selected(), nullptr);
  EXPECT_FALSE(window.ProjectMembers.Contains(core.Path()));
  EXPECT_TRUE(window.ProjectChanged);
  window.menu.mnuTreePopupRemoveProject.Execute();
  EXPECT_TRUE(program.reader.ReadProject(core.Path())) << "no node is left behind";
}

TEST_F(ProjectDisplayTest, SearchGoesRoundThroughProjectsAndReferences) {
  using enum ProjectSearch::Direction;
  frmBuilder& window = program.window;
  const std::string project = "x)" + core.Path();
  const std::string reference = "r-1" + core.Path();
  const std::string object = "o-1" + core.Path();
  struct Case {
    const char* wanted;
    ProjectSearch::Direction direction;
    std::string selected;
    std::size_t number, of;
  };
  const Case cases[] = {{"CORE", Next, project, 1, 1},     {"{a}", Next, reference, 1, 1},
                        {"#1#", Next, object, 2, 2},       {"#1#", Next, reference, 1, 2},
                        {"#1#", Previous, object, 2, 2},   {"e", Next, "x)" + bare, 2, 2},
                        {"e", Next, project, 1, 2},        {"e", Previous, "x)" + bare, 2, 2},
                        {"core.DLL", Next, project, 1, 1}, {"nowhere", Next, project, 0, 0},
                        {"", Next, project, 0, 0}};
  for (const Case& c : cases) {
    const auto hit = program.search.FindNode(c.wanted, c.direction);
    EXPECT_EQ(hit.number, c.number) << c.wanted;
    EXPECT_EQ(hit.of, c.of) << c.wanted;
    EXPECT_EQ(window.tvwProjects.Selected()->Key(), c.selected) << c.wanted;
  }
  EXPECT_EQ(window.lblProjectName.Get(), "Core");

  for (const std::string& path : {core.Path(), bare}) program.queue.Add(path);
  EXPECT_EQ(program.search.FindRow("BARE", Next).of, 1U);
  EXPECT_EQ(window.lvwQueue.Selected()->Key(), bare);
  EXPECT_EQ(program.search.FindRow(".vbp", Next).number, 1U);
  EXPECT_EQ(program.search.FindRow(".vbp", Previous).number, 2U);
}

}  // namespace
}  // namespace gorbex::test
