#include <wx/listbox.h>
#include <wx/textctrl.h>

#include <filesystem>
#include <fstream>
#include <string>

#include "tests/ui/window_fixture.h"
#include "ui/state_list.h"

namespace gorbex::test {
namespace {

using ui::ProjectTree;
using ui::StateList;

using FailedPaneTest = WindowFixture;

TEST_F(FailedPaneTest, LeadsFromARedRowToItsFailureAndBackAgain) {
  for (const char* file : {"Core/modErrors.bas", "Money/Amount.cls"}) {
    std::filesystem::remove(bench.Product() / file);
  }
  Open(kProduct);
  frame->SetSize(wxRect(0, 0, 800, 600));
  auto& queue = The<StateList>("lvwQueue");
  // The parts follow the window a moment later.
  ASSERT_TRUE(User::Sees(
      [&] { return frame->ScreenToClient(queue.GetScreenRect().GetBottomLeft()).y < 600; }));
  User::Waits();
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
  EXPECT_TRUE(User::Sees([&] { return queue.GetSize().y == height; })) << "it has its room again";
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
