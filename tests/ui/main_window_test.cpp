#include <wx/splitter.h>
#include <wx/statusbr.h>

#include <cstdlib>
#include <string>

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
  void AddProject(const std::string& folderName) {
    dialogs.choices.emplace_back(Path(folderName));
    user.Presses('A', wxMOD_CONTROL | wxMOD_SHIFT);
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
  wxWindow::FindWindowByLabel("&Open...", frame)->SetFocus();
  AddProject("Money");
  AddProject("Core");
  ASSERT_NE(Shown("tvwProjects"), nullptr);
  EXPECT_TRUE(Shown("tvwProjects")->HasFocus())
      << "and leaves the keyboard to what it made room for";
  Drag("Money");
  EXPECT_EQ(Queue(), "Money.vbp");
  Drag("Core");
  Drag("Core");
  EXPECT_EQ(Queue(), "Money.vbp Core.vbp");
  user.Presses('R', wxMOD_CONTROL);
  EXPECT_EQ(Queue(), "Core.vbp Money.vbp");
  program->window.menu.mnuQueueMarkAll.Execute();
  Asked();

  const auto shown = [&](int field) { return frame->GetStatusBar()->GetStatusText(field); };
  wxString duringTheMessage;
  const auto listening = program->run.events.Connect([&](const RunEvent& event) {
    if (std::holds_alternative<QuestionAsked>(event)) duringTheMessage = shown(0) + shown(2);
  });
  user.Presses(WXK_F7);
  ASSERT_TRUE(
      User::Sees([&] { return !program->work.Goes(Task::Run) && Icons() == "buildok buildok"; }));
  EXPECT_EQ(Asked(), Journal{"show Built 2 components."});
  EXPECT_EQ(duringTheMessage, "The build is done2 built, 0 failed");
  auto& queue = The<StateList>("lvwQueue");
  EXPECT_TRUE(queue.GetItemText(1, 5).EndsWith(" s")) << "the time it took";
  queue.SetColumnWidth(1, queue.FromDIP(170));
  const wxString cut = queue.GetItemText(1, 1);
  EXPECT_TRUE(cut.StartsWith("C:") && cut.EndsWith("Money.vbp") && cut.Contains("...")) << cut;

  dialogs.choices.emplace_back("C:\\Storefront\\New.bpf");
  user.Presses('S', wxMOD_CONTROL);
  EXPECT_EQ(frame->GetTitle(), "GorbexBuilder [C:\\Storefront\\New.bpf]");
  program->window.menu.mnuFileNew.Execute();
  User::Waits();
  EXPECT_EQ(Shown("lvwQueue"), nullptr);
  EXPECT_EQ(shown(2) + shown(4), "") << "it is another build project";
  program->window.menu.mnuFileMRU[0].Execute();
  User::Waits();
  EXPECT_EQ(Queue(), "Core.vbp Money.vbp");
}

TEST_F(MainWindowTest, AsksBeforeItClosesAndRemembersItsPlace) {
  Open(kProduct);
  frame->SetSize(wxRect(60, 80, 1000, 700));
  auto* panes = dynamic_cast<wxSplitterWindow*>(Shown("tvwProjects")->GetGrandParent());
  panes->SetSashPosition(300);
  User::Waits();
  ASSERT_TRUE(User::Sees([&] { return Stands(60, wxSize(1000, 700)); }));
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
  EXPECT_TRUE(User::Sees([&] { return Stands(60, wxSize(1000, 700)); }));
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
  Asked();
  user.Presses(WXK_F7);
  EXPECT_TRUE(User::Sees([&] { return frame == nullptr; })) << "it closes by itself then";
  EXPECT_EQ(Asked().at(0),
            "show [YesNo Question] A build is running. Do you wish to close when the current "
            "project is done?");
  EXPECT_FALSE(closedEarly);
  EXPECT_EQ(Icons().substr(0, 26), "buildok buildok vbproject ");
}

}  // namespace
}  // namespace gorbex::test
