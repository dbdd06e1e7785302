#include <wx/listbox.h>
#include <wx/textctrl.h>

#include <filesystem>
#include <fstream>
#include <string>
#include <utility>

#include "tests/ui/window_fixture.h"
#include "ui/state_list.h"

namespace gorbex::test {
namespace {

using ui::ProjectTree;
using ui::StateList;

using FailedPaneTest = WindowFixture;

TEST_F(FailedPaneTest, ListsEveryFailedProjectWithWhatTheCompilerWrote) {
  std::filesystem::rename(bench.Product() / "Core/modErrors.bas", bench.Product() / "kept");
  Open(kProduct);
  frmBuilder& window = program->window;
  const auto build = [&](const std::string& folderName) {
    window.lvwQueue.Select(window.lvwQueue.Find(Path(folderName)));
    window.menu.mnuQueueBuild.Execute();
    User::Waits();
  };
  build("Core");
  const wxString log = The<wxTextCtrl>("txtLogFile").GetValue();
  EXPECT_NE(log.Find("\n===================="), wxNOT_FOUND) << log;
  EXPECT_NE(log.Find("modErrors.bas"), wxNOT_FOUND) << "it told of no build: " << log;
  EXPECT_EQ(log.Find("VBResult"), wxNOT_FOUND);

  const std::string compiler = std::exchange(window.compilerPath, "C:\\gone.exe");
  build("Money");
  EXPECT_NE(The<wxTextCtrl>("txtLogFile").GetValue().Find("not found: 'C:\\gone.exe"), wxNOT_FOUND);
  window.compilerPath = compiler;
  std::filesystem::rename(bench.Product() / "kept", bench.Product() / "Core/modErrors.bas");
  Build();
  EXPECT_EQ(Icons().find("builderror"), std::string::npos);
  User::Waits();
  EXPECT_EQ(Shown("txtLogFile"), nullptr) << "nothing failed in the last run";
}

TEST_F(FailedPaneTest, LeadsFromARedRowToItsFailureAndBackAgain) {
  for (const char* file : {"Core/modErrors.bas", "Money/Amount.cls"}) {
    std::filesystem::remove(bench.Product() / file);
  }
  Open(kProduct);
  frame->SetSize(wxRect(0, 0, 800, 600));
  User::Waits();
  auto& queue = The<StateList>("lvwQueue");
  const int height = queue.GetSize().y;
  Build();
  User::Waits();
  for (const char* name : {"lvwData", "lvwQueue"}) {
    const auto& list = The<StateList>(name);
    EXPECT_GE(list.GetSize().y, list.HeightOf(3)) << name << " shows three rows";
  }
  ASSERT_GE(program->failed.All().size(), 2U);
  const auto text = [] { return The<wxTextCtrl>("txtLogFile").GetValue(); };
  EXPECT_TRUE(text().StartsWith(Path("Core")));
  frmBuilder& window = program->window;
  window.lvwQueue.Select(window.lvwQueue.Find(Path("Money")));
  User::Waits();
  EXPECT_TRUE(text().StartsWith(Path("Money"))) << text();
  user.Presses(WXK_F8, wxMOD_CONTROL);
  EXPECT_EQ(Shown("failedProjects"), nullptr);
  EXPECT_EQ(queue.GetSize().y, height) << "it has its room again";
  user.Presses(WXK_F8, wxMOD_CONTROL);
  ASSERT_NE(Shown("failedProjects"), nullptr);
  user.Presses(WXK_HOME);
  EXPECT_TRUE(text().StartsWith(Path("Core"))) << "the list has the focus";
  user.Presses(WXK_F8, wxMOD_CONTROL);
  window.menu.mnuQueueWhyFailed.Execute();
  User::Waits();
  EXPECT_TRUE(text().StartsWith(Path("Money")));
}

TEST_F(FailedPaneTest, ShowsFailuresAndHidesThemAtTheNextClick) {
  std::ofstream(bench.Product() / "Core/modErrors.bas", std::ios::binary)
      << "Attribute VB_Name = \"modErrors\"\r\nSub Main()\r\n";
  Open(kProduct);
  Build();
  EXPECT_EQ(Icons().substr(0, 10), "builderror");
  auto& log = The<wxTextCtrl>("txtLogFile");
  EXPECT_NE(log.GetValue().Find("StoreCore.vbp"), wxNOT_FOUND);
  const std::string opened = "folder C:\\Storefront\\Core\\modErrors.bas";
  user.Presses(WXK_F4);
  EXPECT_EQ(Asked().back(), opened);
  The<wxListBox>("failedProjects").SetFocus();
  user.Presses(WXK_RETURN);
  EXPECT_EQ(Asked(), Journal{opened});
  // A line of this length holds the window up for minutes.
  program->compile.ended.Emit({Path("Core"), false, std::string(200'000, '\0'), ""});
  User::Waits();
  EXPECT_GE(log.GetNumberOfLines(), 100);
  const TreeNode& node = program->window.tvwProjects.Item("x)" + Path("Core"));
  user.Clicks(The<ProjectTree>("tvwProjects"), PointOf(node));
  EXPECT_EQ(Shown("txtLogFile"), nullptr);
  EXPECT_EQ(program->window.lblProjectName.Get(), "StoreCore");
}

}  // namespace
}  // namespace gorbex::test
