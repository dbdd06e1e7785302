#include "analysis/reference_update.h"

#include "core/node_key.h"
#include "core/reference_nodes.h"
#include "platform/code_page.h"

#include "tests/support/program_fixture.h"

namespace gorbex::test {
namespace {

class ReferenceUpdateTest : public ProgramFixture {
 protected:
  void Load() {
    program.buildProject.LoadProject(group.BuildProject());
    program.window.buildDirectory = "C:\\Group\\Bin\\";
    Effects();
  }
  /// What a build of the project leaves: an interface, registered for a type library.
  void Rebuilt(const GroupProject& project, const std::string& library) {
    platform.components.guids[project.Binary()] = "{I" + library;
    platform.registry.AddText(RegistryRoot::ClassesRoot, "Interface\\{I" + library + "\\TypeLib",
                              "", library);
  }
};

TEST_F(ReferenceUpdateTest, ReferencesToProjectsBuiltBeforeAreRepointedEverywhere) {
  auto& core = group.Library("Core");
  auto& app = group.Executable("App").Uses("Core").Uses("Later").Uses("Core");
  const std::string lower = LowerCase(core.Guid());
  app.Line("Module=a; a.bas").Line("Form=gone.frm");
  const std::string module = "C:\\Group\\App\\a.bas";
  platform.files.AddFile(module, "x " + lower + core.Guid() + " y");
  group.Library("Later");
  const std::string before = platform.files.Text(app.Path());
  platform.files.SetAttributes(app.Path(), file_attribute::kReadOnly);
  Load();
  Rebuilt(core, "{NEW}");
  dialogs.answers = {Answer::Ignore};
  program.referenceUpdate.UpdateProjectReferences(app.Path());
  std::string after = before;
  for (auto at = after.find(core.Guid()); at != after.npos; at = after.find(core.Guid())) {
    after.replace(at, core.Guid().size(), "{NEW}");
  }
  EXPECT_EQ(platform.files.Text(app.Path()), after);
  EXPECT_EQ(platform.files.Text(module), "x {NEW}{NEW} y");
  Journal expected;
  for (const auto& path : {app.Path(), app.Path(), module}) {
    expected.insert(expected.end(), {"attributes " + path + " 32", "write " + path});
  }
  const auto gone =
      Reported(53, "File not found: 'C:\\Group\\App\\gone.frm'", ": frmBuilder.ReplaceInFile");
  expected.push_back(gone);
  EXPECT_EQ(Effects(), expected);
}

TEST_F(ReferenceUpdateTest, UnchangedIdentitiesAreLeftAndUnreadableOnesEmptied) {
  auto& app = group.Executable("App").Uses("Core");
  auto& core = group.Library("Core").Uses("App");
  auto& tool = group.Executable("Tool").Uses("Core");
  Load();
  Rebuilt(core, core.Guid());
  const std::string before = platform.files.Text(tool.Path());
  program.referenceUpdate.UpdateProjectReferences(tool.Path());
  program.referenceUpdate.UpdateProjectReferences(app.Path());
  EXPECT_EQ(Effects(), Journal{}) << "the same identity; nothing above";
  const std::string zero = "{00000000-0000-0000-0000-000000000000}";
  platform.components.guids[core.Binary()] = zero;
  platform.registry.AddText(RegistryRoot::ClassesRoot, "Interface\\" + zero + "\\TypeLib", "", "x");
  program.referenceUpdate.UpdateProjectReferences(tool.Path());
  std::string emptied = before;
  emptied.erase(before.find(core.Guid()), core.Guid().size());
  EXPECT_EQ(platform.files.Text(tool.Path()), emptied);

  program.window.lvwQueue.Add("C:\\x.vbp", "", Image::None, 1).SetSubItem(1, "C:\\x.vbp");
  Effects();
  program.referenceUpdate.UpdateProjectReferences(tool.Path());
  program.referenceUpdate.UpdateProjectReferences("C:\\y.vbp");
  const std::string call = "Invalid procedure call or argument: ";
  const std::string name = ": frmBuilder.UpdateProjectReferences";
  EXPECT_EQ(Effects(), (Journal{Reported(5, call + "'C:\\x.vbp'", name),
                                Reported(5, call + "'C:\\y.vbp'", name)}));
}

TEST_F(ReferenceUpdateTest, WhatIsShownFollowsTheFileFromOneRunToTheNext) {
  auto& core = group.Library("Core");
  auto& app = group.Executable("App").Uses("Core");
  Load();
  for (const std::string next : {"{NEW}", "{NEWER}"}) {
    Rebuilt(core, next);
    program.referenceUpdate.UpdateProjectReferences(app.Path());
    EXPECT_NE(platform.files.Text(app.Path()).find(next), std::string::npos);
    const TreeNode& node =
        program.window.tvwProjects.Item(NodeKey(node_prefix::kProject, app.Path()));
    std::string shown;
    ForEachReference(node, [&](TreeNode& reference) { shown = reference.Text(); });
    EXPECT_NE(shown.find(next), std::string::npos);
    program.display.RefreshReferences();
    EXPECT_EQ(program.window.lvwData.At(1).Text(), LowerCase(next));
  }
}

TEST_F(ReferenceUpdateTest, ComponentsWithoutIdentityAreForetold) {
  auto& core = group.Library("Core");
  auto& base = group.Library("Base");
  auto& app = group.Executable("App").Uses("Core").Uses("Base").Uses("Later");
  group.Library("Later");
  Load();
  Rebuilt(base, "{NEW}");
  const auto lost = [&](const std::string& coming) {
    return program.referenceUpdate.ComponentsWithoutIdentity(
        app.Path(), [&](const std::string& path) { return path == coming; });
  };
  EXPECT_EQ(lost(""), Journal{core.Binary()});
  EXPECT_EQ(lost(core.Path()), Journal{});
  program.window.buildDirectory = "C:\\Group\\Bin";
  EXPECT_EQ(lost(""), (Journal{"C:\\Group\\BinCore.dll", "C:\\Group\\BinBase.dll"}));
}

}  // namespace
}  // namespace gorbex::test
