#include <wx/button.h>
#include <wx/stattext.h>
#include <wx/statusbr.h>
#include <wx/textctrl.h>

#include <algorithm>
#include <cstdlib>
#include <filesystem>
#include <fstream>
#include <string>
#include <utility>

#include "core/node_key.h"
#include "tests/ui/window_fixture.h"
#include "ui/dependency_canvas.h"
#include "ui/state_list.h"
#include "ui/timeline_view.h"

namespace gorbex::test {
namespace {

using ui::DependencyCanvas;
using ui::ProjectTree;
using ui::StateList;
using ui::TimelineView;

using PanesTest = WindowFixture;

TEST_F(PanesTest, IsDrivenByTheKeyboardAlone) {
  Open(kProduct);
  auto& tree = The<ProjectTree>("tvwProjects");
  tree.SetFocus();
  TreeView& state = program->window.tvwProjects;
  user.Presses(WXK_HOME);
  EXPECT_EQ(state.Selected(), state.Find("root"));
  user.Presses('S');
  EXPECT_EQ(state.Selected()->Key(), "x)" + Path("Till")) << "the next whose file begins so";
  user.Presses(WXK_HOME);
  user.Types("storeo");
  EXPECT_EQ(state.Selected()->Key(), "x)" + Path("Orders"));
  user.Presses(WXK_END);
  const TreeNode* project = state.Selected();
  ASSERT_EQ(project->Key(), "x)" + Path("Core"));
  ASSERT_FALSE(project->Expanded());
  user.Presses(WXK_RIGHT);
  EXPECT_TRUE(project->Expanded());
  user.Presses(WXK_RIGHT);
  EXPECT_EQ(state.Selected(), project->Children().front());
  user.Presses(WXK_LEFT);
  user.Presses(WXK_LEFT);
  EXPECT_FALSE(project->Expanded());
  EXPECT_EQ(program->window.lvwData.Tag(), project->Text()) << "shown as a click shows it";

  auto& queue = The<StateList>("lvwQueue");
  queue.SetFocus();
  user.Presses(WXK_HOME);
  user.Presses(WXK_DOWN);
  const std::string second = program->window.lvwQueue.At(2).Key();
  ASSERT_EQ(program->window.lvwQueue.Selected(), &program->window.lvwQueue.At(2));
  user.Presses(WXK_SPACE);
  EXPECT_FALSE(program->window.lvwQueue.At(2).Checked());
  user.Presses(WXK_UP, wxMOD_ALT);
  EXPECT_EQ(program->window.lvwQueue.At(1).Key(), second);
  dialogs.answers = {Answer::Yes};
  user.Presses(WXK_DELETE);
  EXPECT_EQ(program->window.lvwQueue.Find(second), nullptr);
}

TEST_F(PanesTest, LeadsFromTheQueueToTheProjectAndBack) {
  Open(kProduct);
  frmBuilder& window = program->window;
  auto& tree = The<ProjectTree>("tvwProjects");
  const auto inSight = [&] {
    const TreeNode& selected = *window.tvwProjects.Selected();
    const wxRect place = tree.PlaceOf(selected);
    return !place.IsEmpty() && tree.GetClientRect().Contains(place) &&
           tree.NodeOf(tree.GetSelection()) == &selected;
  };
  EXPECT_TRUE(inSight()) << "the project that was opened last";
  auto& queue = The<StateList>("lvwQueue");
  queue.SetFocus();
  user.Presses(WXK_HOME);
  const std::string first = window.lvwQueue.At(1).Key();
  EXPECT_EQ(window.tvwProjects.Selected()->Key(), "x)" + first);
  EXPECT_EQ(window.lblFilename.Get(), first);
  EXPECT_TRUE(inSight());
  user.Presses(WXK_RETURN);
  EXPECT_TRUE(tree.HasFocus());
  user.Presses(WXK_END);
  EXPECT_EQ(NodeKey(node_prefix::kProject, window.lvwQueue.SelectedRow().Key()),
            window.tvwProjects.Selected()->Key());
}

TEST_F(PanesTest, TakesTheKeyboardFromPaneToPane) {
  std::filesystem::remove(bench.Product() / "Core/modErrors.bas");
  Open(kProduct);
  // A list may have the keyboard through a window of its own.
  const auto focus = [] {
    const wxWindow* window = wxWindow::FindFocus();
    if (window == nullptr) return std::string("nothing");
    const bool isPart = dynamic_cast<const StateList*>(window->GetParent()) != nullptr;
    return (isPart ? window->GetParent() : window)->GetName().utf8_string();
  };
  Shown("tvwProjects")->SetFocus();
  Build();
  for (const char* pane : {"details", "lvwData", "lvwQueue", "failedProjects", "tvwProjects"}) {
    user.Presses(WXK_F6);
    EXPECT_EQ(focus(), pane);
  }
  user.Presses(WXK_F6, wxMOD_SHIFT);
  EXPECT_EQ(focus(), "failedProjects");
  Shown("tvwProjects")->SetFocus();
  for (const char* stop : {"details", "lvwData", "failedProjects", "txtLogFile", "hideFailed",
                           "termsInForce", "lvwQueue", "tvwProjects"}) {
    user.Presses(WXK_TAB);
    EXPECT_EQ(focus(), stop) << "Tab stops nowhere that cannot be seen";
  }
}

TEST_F(PanesTest, UsesTheRoomItHas) {
  Open(kProduct);
  frame->SetSize(wxRect(0, 0, 1390, 960));
  User::Waits();
  auto& queue = The<StateList>("lvwQueue");
  auto& references = The<StateList>("lvwData");
  EXPECT_GT(queue.GetSize().y * 3, frame->GetClientSize().y);
  const auto width = [](const StateList& list) {
    int all = 0;
    for (int i = 0; i < list.GetColumnCount(); ++i) all += list.GetColumnWidth(i);
    return all;
  };
  const auto fills = [&](const StateList& list) {
    return std::abs(list.GetClientSize().x - width(list)) <= list.FromDIP(24);
  };
  EXPECT_TRUE(fills(queue) && fills(references)) << width(queue) << " " << width(references);
}

TEST_F(PanesTest, CopiesAndOpensWhatAPopUpMenuIsOpenedOn) {
  Open(kProduct);
  frmBuilder& window = program->window;
  const auto choose = [&](const char* pane, int accessKey) {
    Shown(pane)->SetFocus();
    User::Then([&] { user.PressesInMenu(accessKey); });
    user.Presses(WXK_F10, wxMOD_SHIFT);
  };
  choose("tvwProjects", 'Y');
  EXPECT_EQ(Clipboard().utf8_string(), window.tvwProjects.Selected()->Text());
  window.lvwData.Select(&window.lvwData.At(1));
  User::Waits();
  choose("lvwData", 'I');
  EXPECT_EQ(Clipboard().utf8_string(), window.lvwData.At(1).Text());
  Asked();
  window.lvwQueue.Select(window.lvwQueue.Find(Path("Money")));
  User::Waits();
  choose("lvwQueue", 'P');
  EXPECT_EQ(Asked(), Journal{"folder C:\\Storefront\\Money"});
}

TEST_F(PanesTest, LeadsFromAMissingComponentToItsProjects) {
  for (const char* folder : {"Money/StoreMoney.vbp", "Till/StoreTill.vbp"}) {
    std::ofstream(bench.Product() / folder, std::ios::app | std::ios::binary)
        << "Object={00000000-0000-4000-8000-0000000000FF}#2.0#0; GONE.OCX\r\n";
  }
  Open(kProduct);
  const frmBuilder& window = program->window;
  const auto count = [&] { return frame->GetStatusBar()->GetStatusText(3); };
  EXPECT_EQ(count(), "1 component missing");
  user.Presses('D', wxMOD_CONTROL | wxMOD_SHIFT);
  auto& projects = The<StateList>("lvwProjects");
  EXPECT_EQ(The<StateList>("lvwComponents").GetItemText(0, 1), "2");
  ASSERT_EQ(projects.GetItemCount(), 2);
  EXPECT_TRUE(Shown("frmMissing")->GetScreenRect().GetTop() > projects.GetParent()->FromDIP(300));
  user.Presses(WXK_TAB);
  EXPECT_TRUE(projects.HasFocus() || wxWindow::FindFocus()->GetParent() == &projects);
  user.Presses(WXK_DOWN);
  user.Presses(WXK_RETURN);
  const ListRow* shown = program->missing.lvwProjects.Selected();
  ASSERT_EQ(shown, &program->missing.lvwProjects.At(2));
  EXPECT_EQ(window.tvwProjects.Selected()->Key(), "x)" + shown->Key());
  EXPECT_EQ(window.lvwData.Tag(), shown->Key());
  ASSERT_NE(window.lvwData.Selected(), nullptr);
  EXPECT_EQ(window.lvwData.Selected()->SubItem(2), "gone.ocx");

  program->registry.subSetRegistryValue(
      "HKEY_CLASSES_ROOT\\TypeLib\\{00000000-0000-4000-8000-0000000000FF}\\2.0\\0\\win32", "",
      Path("Till"));
  user.Presses(WXK_F5);
  EXPECT_EQ(count(), "No component missing");
  EXPECT_EQ(Shown("lvwComponents"), nullptr) << "a hint is in its place";
  user.Presses(WXK_ESCAPE);
  EXPECT_EQ(Shown("frmMissing"), nullptr);
}

TEST_F(PanesTest, ThePictureOfTheDependenciesSharesItsSelection) {
  Open(kProduct);
  frmBuilder& window = program->window;
  const DependencyPicture& picture = program->picture;
  const auto selected = [&] {
    return picture.Selected() ? picture.Projects()[*picture.Selected()].name : "";
  };
  user.Presses('U', wxMOD_CONTROL);
  auto& canvas = The<DependencyCanvas>("dependencyCanvas");
  EXPECT_TRUE(canvas.HasFocus());
  const auto& list = The<StateList>("lvwDependencies");
  EXPECT_EQ(static_cast<std::size_t>(list.GetItemCount()), window.ProjectMembers.Count());
  wxRect place;
  EXPECT_TRUE(User::Sees([&] {
    const wxRect before = std::exchange(place, canvas.PlaceOf(1));
    return place.width > 0 && place == before;
  })) << "the picture keeps its size";
  user.Clicks(canvas, {place.x + place.width / 2, place.y + place.height / 2});
  ASSERT_EQ(picture.Selected(), 1U);
  EXPECT_EQ(window.tvwProjects.Selected()->Text(), picture.Projects()[1].path);
  EXPECT_EQ(window.lvwQueue.SelectedRow().Key(), picture.Projects()[1].path);
  window.lvwQueue.Select(window.lvwQueue.Find(Path("Money")));
  User::Waits();
  EXPECT_EQ(selected(), "StoreMoney");
  user.Presses(WXK_RIGHT);
  EXPECT_NE(selected(), "StoreMoney") << "one that uses it";
  user.Presses('+');
  EXPECT_GT(canvas.PlaceOf(1).width, place.width);
  user.Presses('F', wxMOD_CONTROL);
  user.Types("till");
  EXPECT_EQ(selected(), "StoreTill");
  user.Presses(WXK_ESCAPE);
  user.Presses('0');
  EXPECT_EQ(canvas.PlaceOf(1), place);
  user.Presses(WXK_RETURN);
  EXPECT_TRUE(User::Sees([] { return Shown("tvwProjects")->HasFocus(); }));
  user.Presses('U', wxMOD_CONTROL);
  user.Presses(WXK_ESCAPE);
  EXPECT_EQ(Shown("frmDependencies"), nullptr);
}

TEST_F(PanesTest, LeadsFromAFindingToItsProject) {
  std::filesystem::remove(bench.Product() / "Money/Amount.cls");
  Open(kProduct);
  user.Presses(WXK_F8);
  auto& list = The<StateList>("lvwFindings");
  ASSERT_TRUE(list.HasFocus() || wxWindow::FindFocus()->GetParent() == &list);
  long row = 0;
  while (row < list.GetItemCount() && list.GetItemText(row, 1) != "Amount.cls is missing") ++row;
  ASSERT_LT(row, list.GetItemCount());
  for (long i = 0; i < row; ++i) user.Presses(WXK_DOWN);
  user.Presses(WXK_RETURN);
  EXPECT_EQ(program->window.tvwProjects.Selected()->Text(), Path("Money"));
  user.Presses(WXK_ESCAPE);
  EXPECT_EQ(Shown("frmCheck"), nullptr);
}

TEST_F(PanesTest, DrawsTheLastRunAndSavesItsReport) {
  Open(kProduct);
  user.Presses('L', wxMOD_CONTROL | wxMOD_SHIFT);
  EXPECT_EQ(Shown("lvwRunProjects"), nullptr) << "a hint is in its place";
  user.Presses(WXK_ESCAPE);
  Build();
  user.Presses('L', wxMOD_CONTROL | wxMOD_SHIFT);
  EXPECT_EQ(The<StateList>("lvwRunProjects").GetItemCount(), 10);
  auto& timeline = The<TimelineView>("timeline");
  const wxRect bar = timeline.PlaceOf(2);
  user.Clicks(timeline, bar.GetPosition() + wxSize(bar.width / 2, bar.height / 2));
  const LastRunList& run = program->lastRunList;
  EXPECT_EQ(run.SelectedBar(), 2U);
  user.Presses(WXK_RIGHT);
  EXPECT_EQ(program->lastRunForm.lvwProjects.SelectedRow().Text(), run.NameOfBar(3));
  dialogs.choices = {"C:\\Storefront\\run.html"};
  user.Clicks(*Shown("cmdSaveReport"));
  EXPECT_TRUE(std::filesystem::exists(bench.Product() / "run.html"));
  user.Clicks(*Shown("cmdGoTo"));
  EXPECT_EQ(program->window.tvwProjects.Selected()->Key(),
            "x)" + program->lastRunForm.lvwProjects.SelectedRow().Key());

  const wxRect place = Shown("frmLastRun")->GetRect();
  Shown("frmLastRun")->SetSize(place.x + 20, place.y + 10, place.width - 60, place.height - 30);
  User::Waits();
  const wxSize size = Shown("frmLastRun")->GetSize();
  user.Presses(WXK_ESCAPE);
  Close();
  Open(kProduct);
  user.Presses('L', wxMOD_CONTROL | wxMOD_SHIFT);
  // The window manager tells the size of the frame around the window a moment later.
  EXPECT_TRUE(User::Sees([&] { return Shown("frmLastRun")->GetSize() == size; }))
      << "its place is remembered";
}

TEST_F(PanesTest, WindowsDoNotBecomeSmallerThanWhatTheySay) {
  Open(kProduct);
  Build();
  struct Case {
    int key;
    int modifiers;
    const char* window;
    const char* list;
    int state;
  };
  for (const Case& each :
       {Case{'U', wxMOD_CONTROL, "frmDependencies", "lvwDependencies", 2},
        Case{'L', wxMOD_CONTROL | wxMOD_SHIFT, "frmLastRun", "lvwRunProjects", 1}}) {
    ASSERT_TRUE(User::Sees([&] { return frame->IsActive(); }));
    user.Presses(each.key, each.modifiers);
    auto& list = The<StateList>(each.list);
    wxWindow& window = *Shown(each.window);
    window.SetSize(400, 300);
    EXPECT_TRUE(User::Sees([&] {
      const auto isWhole = [&](wxWindow* part) {
        return dynamic_cast<wxButton*>(part) == nullptr ||
               window.GetClientRect().Contains(part->GetRect());
      };
      const auto& parts = window.GetChildren();
      return std::all_of(parts.begin(), parts.end(), isWhole) &&
             !list.GetItemText(0, each.state).Contains("...");
    })) << each.window;
    user.Presses(WXK_ESCAPE);
  }
}

TEST_F(PanesTest, FindsInThePaneThatTheUserComesFrom) {
  Open(kProduct);
  frmBuilder& window = program->window;
  auto& queue = The<StateList>("lvwQueue");
  wxWindow& rows = queue.GetChildren().empty() ? queue : *queue.GetChildren().front();
  user.Clicks(rows);
  EXPECT_NE(rows.GetToolTip(), nullptr);
  user.Presses('F', wxMOD_CONTROL);
  EXPECT_EQ(rows.GetToolTip(), nullptr) << "it would cover the field";
  user.Types("money");
  ASSERT_NE(window.lvwQueue.Selected(), nullptr);
  EXPECT_EQ(window.lvwQueue.Selected()->Key(), Path("Money"));
  user.Presses(WXK_ESCAPE);
  EXPECT_EQ(Shown("txtFind"), nullptr);
  EXPECT_TRUE(queue.HasFocus() || rows.HasFocus());

  Shown("tvwProjects")->SetFocus();
  user.Presses('F', wxMOD_CONTROL);
  user.Types("storeorders.vbp");
  user.Presses(WXK_F3);
  ASSERT_EQ(window.tvwProjects.Selected()->Key(), "x)" + Path("Orders"));
  EXPECT_EQ(window.lblProjectName.Get(), "StoreOrders");
  EXPECT_EQ(The<wxStaticText>("lblFound").GetLabel(), "1 of 1");
  auto& text = The<wxTextCtrl>("txtFind");
  text.SelectAll();
  user.Types("no such thing");
  EXPECT_EQ(The<wxStaticText>("lblFound").GetLabel(), "Not found");
  EXPECT_EQ(window.tvwProjects.Selected()->Key(), "x)" + Path("Orders"));
}

}  // namespace
}  // namespace gorbex::test
