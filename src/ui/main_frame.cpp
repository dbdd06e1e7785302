#include "ui/main_frame.h"

#include <wx/sizer.h>

#include <algorithm>
#include <array>

#include "app/offered_commands.h"
#include "core/node_key.h"
#include "ui/about.h"
#include "ui/check_window.h"
#include "ui/dependencies_window.h"
#include "ui/icons.h"
#include "ui/last_run_window.h"
#include "ui/layout_store.h"
#include "ui/logs_window.h"
#include "ui/missing_window.h"
#include "ui/observe.h"
#include "ui/project_drag.h"
#include "ui/select_control_window.h"
#include "ui/selection_renderer.h"
#include "ui/system_window.h"
#include "ui/test_control_window.h"
#include "ui/text_conversion.h"

namespace gorbex::ui {
namespace {

std::vector<ListColumn> ReferenceColumns() {
  return {{"GUID", 88, false, 1},       {"Version", 50, false, 2},     {"Component", 104, false, 4},
          {"Registered", 84, false, 2}, {"Description", 84, false, 3}, {"Verdict", 270, false, 8}};
}

// Commands that only a window can run.
std::array<Command*, 8> OwnCommands(MainMenu& menu) {
  return {&menu.mnuHelpAbout,         &menu.mnuToolsFind,         &menu.mnuToolsFindNext,
          &menu.mnuToolsFindPrevious, &menu.mnuWindowFailed,      &menu.mnuQueueWhyFailed,
          &menu.mnuWindowNextPane,    &menu.mnuWindowPreviousPane};
}

}  // namespace

MainFrame::MainFrame(Program& program, const ShowFolder& showFolder)
    : wxFrame(nullptr, wxID_ANY, "GorbexBuilder", wxDefaultPosition, wxDefaultSize,
              wxDEFAULT_FRAME_STYLE, "frmBuilder"),
      program_(program),
      ids_(*this),
      place_(*this, program.window),
      popups_(*this, program, showFolder),
      mailTimer_(this) {
  SetMinClientSize(FromDIP(wxSize(640, 420)));
  SetSize(FromDIP(wxSize(1100, 740)));
  SetIcons(ProgramIcons());
  SelectionRenderer::Use();
  HandleCommands();
  menus_ = std::make_unique<WindowMenus>(*this, program_.window.menu, ids_);
  // The status text is the program's; menus have no help texts to put in its place.
  SetStatusBarPane(-1);
  status_ = new RunStatusBar(this, program_.window, program_.run.events);
  SetStatusBar(status_);
  progress_ = std::make_unique<DesktopProgress>(*this, program_.run.events, program_.notice);
  MakePanes();
  BindLists();
  FollowState();
  FollowTimer();
  MakeForms();
  FollowSize();
  program_.editor.openBySystem = showFolder;
  HoldBarsBack(*this);
  Bind(wxEVT_CLOSE_WINDOW, &MainFrame::OnClose, this);
  Bind(wxEVT_IDLE, &MainFrame::OnIdle, this);
}

MainFrame::~MainFrame() {
  for (Command* command : OwnCommands(program_.window.menu)) command->SetHandler({});
  program_.editor.openBySystem = {};
  progress_.reset();
  ShowPointer(MousePointer::Default);
}

void MainFrame::HandleCommands() {
  MainMenu& menu = program_.window.menu;
  menu.mnuHelpAbout.SetHandler([this] { ShowAbout(this); });
  menu.mnuToolsFind.SetHandler([this] {
    find_->Open();
    // The panes are lower now.
    CallAfter([this] {
      tree_->ShowSelected();
      queue_->ShowSelected();
    });
  });
  menu.mnuToolsFindNext.SetHandler([this] { find_->Find(ProjectSearch::Direction::Next); });
  menu.mnuToolsFindPrevious.SetHandler([this] { find_->Find(ProjectSearch::Direction::Previous); });
  menu.mnuWindowFailed.SetHandler([this] {
    const bool shows = !layout_->ShowsFailures();
    program_.window.txtLogFile.visible.Set(shows);
    if (shows) log_->Enter();
  });
  menu.mnuQueueWhyFailed.SetHandler([this] {
    program_.window.txtLogFile.visible.Set(true);
    log_->GoTo(program_.window.lvwQueue.SelectedRow().Key());
    log_->Enter();
  });
  menu.mnuWindowNextPane.SetHandler([this] { cycle_->Go(PaneCycle::Direction::Forward); });
  menu.mnuWindowPreviousPane.SetHandler([this] { cycle_->Go(PaneCycle::Direction::Backward); });
}

// They stay beside the window for its whole life and show themselves when their state says so.
void MainFrame::MakeForms() {
  new LogsWindow(this, program_.logs);
  new MissingWindow(this, program_.missing, ids_);
  new CheckWindow(this, program_.checkForm, ids_);
  new DependenciesWindow(this, program_.dependencies, program_.picture, program_.registry, ids_);
  program_.lastRun.Listen(program_.run.events);
  new LastRunWindow(this,
                    {program_.lastRunForm, program_.lastRunList, program_.lastRun,
                     program_.registry, program_.window.menu.mnuFileBuild},
                    ids_);
  new SelectControlWindow(this, program_.selectControl,
                          [this] { program_.componentTest.frmSelectControl_Form_Unload(); });
  new TestControlWindow(this, program_.testControl,
                        [this] { program_.componentTest.frmTestControl_Form_Resize(); });
}

void MainFrame::MakePanes() {
  layout_ = std::make_unique<PaneLayout>(this);
  // Tab goes through them in the order in which they are made.
  treePane_ = MakeTreePane(layout_->Columns());
  dataPane_ = MakeReferencesPane(layout_->Details());
  queuePane_ = MakeQueuePane(layout_->Rows());
  log_ = new LogPane(layout_->Details(), program_.failed, program_.window.txtLogFile,
                     [this](const std::string& path) { program_.failureSteps.Open(path); });
  layout_->Join({treePane_, dataPane_, queuePane_, data_, queue_, log_});
  auto* sizer = new wxBoxSizer(wxVERTICAL);
  sizer->Add(layout_->Rows(), wxSizerFlags(1).Expand());
  MakeFindBar();
  sizer->Add(find_, wxSizerFlags().Expand());
  SetSizer(sizer);
  cycle_ = std::make_unique<PaneCycle>(std::vector<wxWindow*>{
      tree_, &treePane_->Hint(), block_, data_, queue_, &queuePane_->Hint(), log_});
  ShowEmptyPanes();
}

void MainFrame::MakeFindBar() {
  using Direction = FindBar::Direction;
  const auto inTree = [this](const wxString& wanted, Direction direction) {
    return program_.search.FindNode(FromWx(wanted), direction);
  };
  const auto inQueue = [this](const wxString& wanted, Direction direction) {
    return program_.search.FindRow(FromWx(wanted), direction);
  };
  find_ = new FindBar(
      this, {{tree_, "Find in the projects:", inTree}, {queue_, "Find in the queue:", inQueue}},
      "Name, path, component or GUID");
}

Pane* MainFrame::MakeTreePane(wxWindow* parent) {
  auto* pane = new Pane(parent, "Projects");
  MainMenu& menu = program_.window.menu;
  tree_ = new ProjectTree(pane, program_.window.tvwProjects, TreeGesturesOf());
  pane->SetContent(tree_, ids_,
                   "No build project is open.\nOpen one, make one, or add your VB projects.",
                   {&menu.mnuFileOpen, &menu.mnuFileNewFrom, &menu.mnuTreePopupAddProject});
  return pane;
}

Pane* MainFrame::MakeReferencesPane(wxWindow* parent) {
  auto* pane = new Pane(parent, "Project");
  block_ = new DetailsBlock(pane, program_.window);
  pane->AddHeader(block_);
  data_ = new StateList(pane, "lvwData", program_.window.lvwData, ReferenceColumns());
  pane->SetContent(data_, ids_, "Select a project to see what it references.");
  return pane;
}

Pane* MainFrame::MakeQueuePane(wxWindow* parent) {
  auto* pane = new Pane(parent, "Build Queue");
  terms_ = new LinkLine(pane);
  pane->AddBesideCaption(terms_);
  queue_ = new QueueList(pane, program_.window, program_.run.events, program_.outdated);
  pane->SetContent(queue_, ids_, "Drag projects here from the tree, or add them all.",
                   {&program_.window.menu.mnuQueueAddAll});
  pane->Hint().SetName("queueHint");
  const auto drop = [this] {
    if (program_.window.menu.mnuQueueAdd.IsPossible()) {
      program_.queue.lvwQueue_DragDrop("tvwProjects");
    }
  };
  queue_->SetDropTarget(new ProjectDropTarget(drop));
  pane->Hint().SetDropTarget(new ProjectDropTarget(drop));
  return pane;
}

ProjectTree::Gestures MainFrame::TreeGesturesOf() {
  const auto press = [this](TreeNode* node) {
    program_.display.tvwProjects_MouseDown(node);
    if (node != nullptr) program_.display.MarkReferenceNode(*node);
  };
  return {press, [press](TreeNode& node) { press(&node); },
          [this](TreeNode* node) {
            const bool isProject = program_.display.tvwProjects_MouseDown(node);
            popups_.Open(isProject ? menus_->TreePopup() : menus_->GroupPopup(),
                         node == nullptr ? PointedItem() : PointedNode(*node, program_.references));
          },
          [this](TreeNode& node) {
            if (node.KeyStartsWith(node_prefix::kProject)) DragProject(tree_);
          }};
}

void MainFrame::BindLists() {
  data_->Bind(wxEVT_CONTEXT_MENU, [this](wxContextMenuEvent&) {
    const ListView& list = program_.window.lvwData;
    if (list.Selected() == nullptr) return;
    popups_.Open(menus_->DataPopup(), PointedReference(*list.Selected(), list.Tag()));
  });
  data_->TellKey(WXK_F5, [this] { program_.display.RefreshReferences(); });
  queue_->Bind(wxEVT_CONTEXT_MENU, [this](wxContextMenuEvent&) {
    const ListRow* row = program_.window.lvwQueue.Selected();
    popups_.Open(menus_->QueuePopup(),
                 row == nullptr ? PointedItem() : PointedItem{row->Key(), ""});
  });
  queue_->Bind(wxEVT_LIST_ITEM_ACTIVATED, [this](wxListEvent&) {
    program_.display.FollowQueue();
    tree_->ShowSelected();
    tree_->SetFocus();
  });
  queue_->TellKey(WXK_DELETE, [&remove = program_.window.menu.mnuQueueRemove] {
    if (remove.IsPossible()) remove.Execute();
  });
  // Some systems' lists take the space bar for a double click and tell of no key.
  queue_->Bind(wxEVT_CHAR_HOOK, [this](wxKeyEvent& event) {
    ListRow* row = program_.window.lvwQueue.Selected();
    const bool isSpace = event.GetKeyCode() == WXK_SPACE && !event.HasAnyModifiers();
    if (isSpace && row != nullptr) row->SetChecked(!row->Checked());
    event.Skip(!isSpace || row == nullptr);
  });
}

void MainFrame::FollowState() {
  frmBuilder& window = program_.window;
  const auto follow = [this](auto& signal, auto listener) { subscriptions_.Add(signal, listener); };
  follow(window.caption.changed, [this](const std::string& text) { SetTitle(ToWx(text)); });
  follow(window.txtLogFile.visible.changed, [this](const bool&) { ShowFailures(); });
  follow(program_.failed.changed, [this] { ShowFailures(); });
  follow(program_.compile.ended, [this](const CompileEnded& compile) {
    if (!program_.work.Goes(Task::Run)) log_->GoTo(compile.path);
  });
  follow(window.lvwQueue.selectionChanged, [this] {
    const ListRow* row = program_.window.lvwQueue.Selected();
    if (row != nullptr && layout_->ShowsFailures()) log_->GoTo(row->Key());
    program_.display.FollowQueue();
  });
  follow(window.tvwProjects.selectionChanged, [this] { program_.display.FollowTree(); });
  follow(program_.marking.marked, [this] { ShowMissing(); });
  follow(window.tvwProjects.cleared, [this] { ShowMissing(); });
  follow(window.mousePointer.changed, [this](const MousePointer& shown) { ShowPointer(shown); });
  follow(window.closeRequested, [this] { Close(); });
  follow(program_.dependencies.projectActivated, [this] {
    Raise();
    tree_->ShowSelected();
    tree_->SetFocus();
  });
  follow(program_.failureSteps.opened, [this](const std::string& path) { log_->GoTo(path); });
  follow(program_.run.events, [this](const RunEvent& event) {
    if (std::holds_alternative<RunStarted>(event)) {
      status_->ShowProblems(program_.checkList.ProblemsAtStart());
    }
  });
  follow(program_.changes.scanned,
         [this](const std::size_t& projects) { status_->ShowChanged(projects); });
  follow(program_.changes.notCompared, [this](const std::string& path, const std::string& reason) {
    notCompared_.push_back(path + ": " + reason);
  });
}

// A painted window has its final size; before that, place and panes are not reliable.
void MainFrame::FollowSize() {
  Observe(*queuePane_, wxEVT_PAINT, [this] {
    if (!isPainted_) CallAfter([this] { Place(); });
    isPainted_ = true;
  });
  Observe(*this, wxEVT_SIZE, [this] { CallAfter([this] { layout_->KeepRoom(); }); });
}

void MainFrame::Place() {
  ShowBars(*this);
  place_.Begin();
  Layout();
  layout_->Restore(LayoutStore(program_.registry));
  tree_->ShowSelected();
  queue_->ShowSelected();
}

// A timer whose interval is 0 never fires.
void MainFrame::FollowTimer() {
  Timer& timer = program_.window.tmrOutlook;
  const auto set = [this, &timer] {
    mailTimer_.Stop();
    const int interval = timer.interval.Get();
    if (timer.enabled.Get() && interval > 0) mailTimer_.Start(interval);
  };
  subscriptions_.Add(timer.enabled.changed, [set](const bool&) { set(); });
  subscriptions_.Add(timer.interval.changed, [set](const int&) { set(); });
  Bind(
      wxEVT_TIMER, [&timer](wxTimerEvent&) { timer.elapsed.Emit(); }, mailTimer_.GetId());
  set();
}

void MainFrame::ShowFailures() {
  layout_->ShowFailures(program_.window.txtLogFile.visible.Get() && !program_.failed.All().empty());
}

void MainFrame::ShowEmptyPanes() {
  const frmBuilder& window = program_.window;
  treePane_->ShowEmpty(!HasProjects(window.tvwProjects));
  dataPane_->ShowEmpty(window.lvwData.Tag().empty());
  queuePane_->ShowEmpty(window.lvwQueue.Count() == 0);
}

void MainFrame::ShowMissing() {
  const auto components = program_.missingList.Refresh();
  status_->ShowMissing(HasProjects(program_.window.tvwProjects) ? MissingText(components) : "");
}

void MainFrame::ShowPointer(MousePointer pointer) {
  const bool busy = pointer == MousePointer::Hourglass;
  if (busy == isBusyCursor_) return;
  isBusyCursor_ = busy;
  busy ? wxBeginBusyCursor() : wxEndBusyCursor();
}

void MainFrame::End() {
  if (!openDialogs_.Any()) {
    Close();
    return;
  }
  isEnding_ = isCloseWanted_ = true;
  program_.run.End();
  openDialogs_.Dismiss(true);
}

void MainFrame::EndWithSession() {
  if (!isAsking_) End();
}

void MainFrame::OnClose(wxCloseEvent& event) {
  // Only the system can ask now. The code that waits for the answer still needs the window.
  if (openDialogs_.Any()) {
    isCloseWanted_ = true;
    if (event.CanVeto()) event.Veto();
    return;
  }
  isAsking_ = true;
  const bool closes = program_.shutDown.Form_QueryUnload();
  isAsking_ = false;
  if (!closes) {
    if (event.CanVeto()) {
      event.Veto();
      return;
    }
    program_.shutDown.SessionEnds();
  }
  isCloseWanted_ = false;
  LayoutStore store(program_.registry);
  layout_->Store(store);
  Destroy();
}

// When the scan is over: its client lets the window go on while it works.
void MainFrame::TellNotCompared() {
  constexpr std::size_t kMost = 10;
  if (notCompared_.empty() || !program_.work.MayUseSourceControl() || openDialogs_.Any()) return;
  std::string text = "These projects could not be compared:\r\n";
  for (std::size_t i = 0; i < std::min(kMost, notCompared_.size()); ++i) {
    text += "\r\n" + notCompared_[i];
  }
  if (notCompared_.size() > kMost) {
    text += "\r\nand " + std::to_string(notCompared_.size() - kMost) + " more";
  }
  notCompared_.clear();
  CallAfter([this, text] { program_.dialogs.Show({text, Buttons::Ok, MessageIcon::Exclamation}); });
}

void MainFrame::OnIdle(wxIdleEvent& event) {
  event.Skip();
  ShowEmptyPanes();
  TellNotCompared();
  status_->ShowUnsaved(program_.buildProject.Changed());
  terms_->Show(TermsInForce(program_.window, program_.options));
  CloseIfDue();
}

// A dialog that could not be closed yet is asked again, and work comes to its end before the window
// does.
void MainFrame::CloseIfDue() {
  if (openDialogs_.Any() || (isEnding_ && program_.shutDown.IsAtWork())) {
    if (openDialogs_.AreDismissed()) openDialogs_.Dismiss(true);
    return;
  }
  if (!isCloseWanted_ && !program_.shutDown.Due()) return;
  isCloseWanted_ = false;
  openDialogs_.Dismiss(false);
  CallAfter([this] { Close(isEnding_); });
}

}  // namespace gorbex::ui
