#include <wx/listctrl.h>
#include <wx/menu.h>
#include <wx/splitter.h>
#include <wx/stattext.h>
#include <wx/statusbr.h>
#include <wx/textctrl.h>

#include <cstdlib>
#include <filesystem>
#include <fstream>
#include <utility>

#include "core/node_key.h"
#include "tests/ui/window_fixture.h"
#include "ui/link_line.h"
#include "ui/project_tree.h"
#include "ui/state_list.h"
#include "ui/window_place.h"

namespace gorbex::test {
namespace {

using ui::LinkLine;
using ui::ProjectTree;
using ui::StateList;

class MainWindowTest : public WindowFixture {
 protected:
  [[nodiscard]] static std::string Path(const std::string& folderName) {
    return "C:\\Storefront\\" + folderName + "\\Store" + folderName + ".vbp";
  }

  void AddProject(const std::string& folderName) {
    dialogs.choices.emplace_back(Path(folderName));
    user.Presses('A', wxMOD_CONTROL | wxMOD_SHIFT);
  }

  [[nodiscard]] wxPoint PointOf(const TreeNode& node) const {
    const wxRect place = The<ProjectTree>("tvwProjects").PlaceOf(node);
    return {place.x + place.width / 2, place.y + place.height / 2};
  }

  void Drag(const std::string& folderName) {
    auto& tree = The<ProjectTree>("tvwProjects");
    const TreeNode& node = program->window.tvwProjects.Item("x)" + Path(folderName));
    wxWindow* queue = Shown("lvwQueue");
    user.Drags(tree, PointOf(node), queue != nullptr ? *queue : *Shown("queueHint"));
  }

  [[nodiscard]] wxRect Place() const {
    return program->window.position.Get() ? ui::InDips(*program->window.position.Get()) : wxRect();
  }

  [[nodiscard]] std::string PlaceText() const {
    const wxRect place = Place();
    return wxString::Format("%d,%d %dx%d, drawn %dx%d", place.x, place.y, place.width, place.height,
                            frame->GetSize().x, frame->GetSize().y)
        .utf8_string();
  }

  // As far as the state knows; a window manager may count its border in or not.
  [[nodiscard]] bool Stands(int left, const wxSize& size) const {
    constexpr int kBorder = 12;
    return frame->GetSize() == size && Place().GetSize() == size &&
           std::abs(Place().x - left) <= kBorder;
  }

  [[nodiscard]] std::string Queue() const {
    std::string names;
    for (const auto& row : program->window.lvwQueue.Rows()) {
      const std::string& path = row->Key();
      names.append(names.empty() ? "" : " ").append(path.substr(path.rfind('\\') + 6));
    }
    return names;
  }
};

TEST_F(MainWindowTest, NamesWhatAScanForChangesPassedOver) {
  Open();
  Asked();
  {
    const auto use = program->session.Use();
    for (int i = 0; i < 12; ++i) program->changes.notCompared.Emit(std::to_string(i), "offline");
    User::Waits();
    EXPECT_TRUE(journal.empty()) << "not before it is over";
  }
  EXPECT_TRUE(User::Sees([&] { return !journal.empty(); }));
  const std::string told = Asked().front();
  EXPECT_TRUE(told.starts_with("show [Ok Exclamation] These projects could not be compared:"));
  EXPECT_TRUE(told.ends_with("\r\n9: offline\r\nand 2 more")) << told;
}

TEST_F(MainWindowTest, TakesAProductFromItsFirstProjectToASavedBuild) {
  Open();
  EXPECT_EQ(Shown("tvwProjects"), nullptr) << "an empty pane says what to do first";
  AddProject("Money");
  AddProject("Core");
  ASSERT_NE(Shown("tvwProjects"), nullptr);
  Drag("Money");
  EXPECT_EQ(Queue(), "Money.vbp");
  Drag("Core");
  Drag("Core");
  EXPECT_EQ(Queue(), "Money.vbp Core.vbp");
  user.Presses('R', wxMOD_CONTROL);
  EXPECT_EQ(Queue(), "Core.vbp Money.vbp");
  program->window.menu.mnuQueueMarkAll.Execute();
  Asked();

  user.Presses(WXK_F7);
  ASSERT_TRUE(
      User::Sees([&] { return !program->work.Goes(Task::Run) && Icons() == "buildok buildok"; }));
  EXPECT_EQ(Asked(), Journal{"show Built 2 components."});
  auto& queue = The<StateList>("lvwQueue");
  EXPECT_TRUE(queue.GetItemText(1, 5).EndsWith(" s")) << "the time it took";
  queue.SetColumnWidth(1, queue.FromDIP(170));
  const wxString cut = queue.GetItemText(1, 1);
  EXPECT_TRUE(cut.StartsWith("C:") && cut.EndsWith("Money.vbp") && cut.length() < 32) << cut;

  dialogs.choices.emplace_back("C:\\Storefront\\New.bpf");
  user.Presses('S', wxMOD_CONTROL);
  EXPECT_EQ(frame->GetTitle(), "GorbexBuilder [C:\\Storefront\\New.bpf]");
  program->window.menu.mnuFileNew.Execute();
  User::Waits();
  EXPECT_EQ(Shown("lvwQueue"), nullptr);
  program->window.menu.mnuFileMRU[0].Execute();
  User::Waits();
  EXPECT_EQ(Queue(), "Core.vbp Money.vbp");
}

TEST_F(MainWindowTest, ListsEveryFailedProjectWithWhatTheCompilerWrote) {
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
  user.Presses(WXK_F7);
  ASSERT_TRUE(User::Sees([&] { return !program->work.Goes(Task::Run); }));
  EXPECT_EQ(Icons().find("builderror"), std::string::npos);
  User::Waits();
  EXPECT_EQ(Shown("txtLogFile"), nullptr) << "nothing failed in the last run";
}

TEST_F(MainWindowTest, LeadsFromARedRowToItsFailureAndBackAgain) {
  for (const char* file : {"Core/modErrors.bas", "Money/Amount.cls"}) {
    std::filesystem::remove(bench.Product() / file);
  }
  Open(kProduct);
  user.Presses(WXK_F7);
  ASSERT_TRUE(User::Sees([&] { return !program->work.Goes(Task::Run); }));
  ASSERT_GE(program->failed.All().size(), 2U);
  const auto text = [] { return The<wxTextCtrl>("txtLogFile").GetValue(); };
  EXPECT_TRUE(text().StartsWith(Path("Core")));
  frmBuilder& window = program->window;
  window.lvwQueue.Select(window.lvwQueue.Find(Path("Money")));
  User::Waits();
  EXPECT_TRUE(text().StartsWith(Path("Money"))) << text();
  user.Presses(WXK_F8);
  EXPECT_EQ(Shown("failedProjects"), nullptr);
  user.Presses(WXK_F8);
  ASSERT_NE(Shown("failedProjects"), nullptr);
  user.Presses(WXK_HOME);
  EXPECT_TRUE(text().StartsWith(Path("Core"))) << "the list has the focus";
  user.Presses(WXK_F8);
  window.menu.mnuQueueWhyFailed.Execute();
  User::Waits();
  EXPECT_TRUE(text().StartsWith(Path("Money")));
  window.lvwQueue.Select(window.lvwQueue.Find(Path("Till")));
  EXPECT_EQ(window.menu.mnuQueueWhyFailed.IsPossible(),
            program->failed.Find(Path("Till")) != nullptr);
}

TEST_F(MainWindowTest, ShowsFailuresAndHidesThemAtTheNextClick) {
  std::ofstream(bench.Product() / "Core/modErrors.bas", std::ios::binary)
      << "Attribute VB_Name = \"modErrors\"\r\nSub Main()\r\n";
  Open(kProduct);
  user.Presses(WXK_F7);
  ASSERT_TRUE(User::Sees([&] { return !program->work.Goes(Task::Run); }));
  EXPECT_EQ(Icons().substr(0, 10), "builderror");
  auto& log = The<wxTextCtrl>("txtLogFile");
  EXPECT_NE(log.GetValue().Find("StoreCore.vbp"), wxNOT_FOUND);
  // A line of this length holds the window up for minutes.
  program->compile.ended.Emit({Path("Core"), false, std::string(200'000, '\0'), ""});
  User::Waits();
  EXPECT_GE(log.GetNumberOfLines(), 100);
  const TreeNode& node = program->window.tvwProjects.Item("x)" + Path("Core"));
  user.Clicks(The<ProjectTree>("tvwProjects"), PointOf(node));
  EXPECT_EQ(Shown("txtLogFile"), nullptr);
  EXPECT_EQ(program->window.lblProjectName.Get(), "StoreCore");
}

TEST_F(MainWindowTest, AsksBeforeItClosesAndRemembersItsPlace) {
  Open(kProduct);
  frame->SetSize(wxRect(60, 80, 1000, 700));
  auto* panes = dynamic_cast<wxSplitterWindow*>(Shown("tvwProjects")->GetGrandParent());
  panes->SetSashPosition(300);
  User::Waits();
  ASSERT_TRUE(User::Sees([&] { return Stands(60, wxSize(1000, 700)); })) << PlaceText();
  const auto unsaved = [&] { return frame->GetStatusBar()->GetStatusText(1); };
  EXPECT_EQ(unsaved(), "");
  program->window.menu.mnuQueueUnMarkAll.Execute();
  User::Waits();
  EXPECT_EQ(unsaved(), "Unsaved");
  dialogs.answers = {Answer::Cancel, Answer::No};
  Asked();
  EXPECT_FALSE(Close());
  EXPECT_TRUE(Close());
  const std::string question = "show [YesNo Question] Save your Builder project?";
  EXPECT_EQ(Asked(), (Journal{question, question}));

  Open(kProduct);
  EXPECT_TRUE(User::Sees([&] { return Stands(60, wxSize(1000, 700)); })) << PlaceText();
  panes = dynamic_cast<wxSplitterWindow*>(Shown("tvwProjects")->GetGrandParent());
  EXPECT_TRUE(User::Sees([&] { return panes->GetSashPosition() == 300; }));
  EXPECT_TRUE(Close());
  EXPECT_TRUE(Asked().empty());
}

TEST_F(MainWindowTest, LinksWhatIsInForceToWhereItIsSet) {
  Open(kProduct);
  auto& line = The<LinkLine>("termsInForce");
  int opened = 0;
  dialogs.useOptions = [&](frmOptions& form) {
    ++opened;
    form.chkCompatability.value.Set(!form.chkCompatability.value.Get());
    form.cmdOK.Execute();
  };
  const wxRect whole = line.PlaceOf(0);
  user.Clicks(line, {whole.x + whole.width / 2, whole.y + whole.height / 2});
  EXPECT_EQ(opened, 1);
  EXPECT_NE(line.PlaceOf(0).width, whole.width) << "it says what holds now";
  line.SetFocus();
  user.Presses(WXK_RETURN);
  EXPECT_EQ(opened, 2);
  user.Presses(WXK_RIGHT);
  dialogs.choices = {"4.5.6"};
  user.Presses(WXK_SPACE);
  EXPECT_EQ(program->options.VersionComponents, "4.5.6");
  const std::string longFolder = "C:\\" + std::string(300, 'x') + "\\";
  program->window.buildDirectory = longFolder;
  User::Waits();
  EXPECT_TRUE(wxRect(line.GetClientSize()).Contains(line.PlaceOf(2))) << "its end is in sight";
}

TEST_F(MainWindowTest, TellsHowManyAStoppedRunLeft) {
  Open(kProduct);
  const auto listening = program->run.events.Connect([&](const RunEvent& event) {
    const auto* started = std::get_if<ProjectStarted>(&event);
    if (started != nullptr && started->number == 2) program->run.mnuFileStop_Click();
  });
  user.Presses(WXK_F7);
  ASSERT_TRUE(User::Sees([&] { return Icons().starts_with("buildok buildok"); }));
  ASSERT_TRUE(User::Sees([&] { return !program->work.Goes(Task::Run); }));
  const auto rows = program->window.lvwQueue.Count();
  EXPECT_EQ(frame->GetStatusBar()->GetStatusText(2),
            wxString::Format("2 built, %zu not built", rows - 2));
}

TEST_F(MainWindowTest, StaysOpenUntilTheRunningProjectIsDone) {
  Open(kProduct);
  dialogs.answers = {Answer::Yes};
  bool closedEarly = false;
  const auto listening = program->run.events.Connect([&](const RunEvent& event) {
    const auto* started = std::get_if<ProjectStarted>(&event);
    if (started == nullptr || started->number != 2) return;
    frame->Close();
    closedEarly = frame == nullptr;
  });
  user.Presses(WXK_F7);
  EXPECT_TRUE(User::Sees([&] { return frame == nullptr; })) << "it closes by itself then";
  EXPECT_FALSE(closedEarly);
  EXPECT_EQ(Icons().substr(0, 26), "buildok buildok vbproject ");
}

TEST_F(MainWindowTest, IsDrivenByTheKeyboardAlone) {
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

TEST_F(MainWindowTest, LeadsFromTheQueueToTheProjectAndBack) {
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

TEST_F(MainWindowTest, TakesTheKeyboardFromPaneToPane) {
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
  user.Presses(WXK_F7);
  ASSERT_TRUE(User::Sees([&] { return !program->work.Goes(Task::Run); }));
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

TEST_F(MainWindowTest, UsesTheRoomItHas) {
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
  frame->SetSize(wxRect(0, 0, 800, 600));
  references.SetFont(references.GetFont().Scaled(1.5F));
  references.SetSize(references.GetSize() - wxSize(1, 0));
  User::Waits();
  EXPECT_LE(width(references), references.GetClientSize().x) << "the verdict is in sight";
}

TEST_F(MainWindowTest, CopiesAndOpensWhatAPopUpMenuIsOpenedOn) {
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

TEST_F(MainWindowTest, LeadsFromAMissingComponentToItsProjects) {
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

TEST_F(MainWindowTest, MakesABuildProjectOfAFolderAndAddsSeveralProjects) {
  Open();
  dialogs.choices = {"C:\\Storefront"};
  user.Presses('N', wxMOD_CONTROL | wxMOD_SHIFT);
  const auto queued = program->window.lvwQueue.Count();
  EXPECT_GE(queued, 8U);
  ASSERT_NE(Shown("tvwProjects"), nullptr);
  program->window.menu.mnuFileNew.Execute();
  dialogs.choices = {Path("Money") + "|" + Path("Core")};
  user.Presses('A', wxMOD_CONTROL | wxMOD_SHIFT);
  EXPECT_EQ(program->window.ProjectMembers.Count(), 2U);
}

TEST_F(MainWindowTest, FindsInThePaneThatTheUserComesFrom) {
  Open(kProduct);
  frmBuilder& window = program->window;
  Shown("lvwQueue")->SetFocus();
  user.Presses('F', wxMOD_CONTROL);
  user.Types("money");
  user.Presses(WXK_RETURN);
  ASSERT_NE(window.lvwQueue.Selected(), nullptr);
  EXPECT_EQ(window.lvwQueue.Selected()->Key(), Path("Money"));
  user.Presses(WXK_ESCAPE);
  EXPECT_EQ(Shown("txtFind"), nullptr);
  EXPECT_TRUE(Shown("lvwQueue")->HasFocus() ||
              wxWindow::FindFocus()->GetParent() == Shown("lvwQueue"));

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
  user.Presses(WXK_RETURN);
  EXPECT_EQ(The<wxStaticText>("lblFound").GetLabel(), "Not found");
  EXPECT_EQ(window.tvwProjects.Selected()->Key(), "x)" + Path("Orders"));
}

}  // namespace
}  // namespace gorbex::test
