#include "ui/main_frame.h"

#include <wx/display.h>
#include <wx/sizer.h>

#include <algorithm>
#include <array>
#include <cmath>
#include <utility>

#include "app/offered_commands.h"
#include "core/file_tools.h"
#include "core/node_key.h"
#include "ui/about.h"
#include "ui/check_window.h"
#include "ui/clipboard.h"
#include "ui/icons.h"
#include "ui/last_run_window.h"
#include "ui/layout_store.h"
#include "ui/logs_window.h"
#include "ui/missing_window.h"
#include "ui/project_drag.h"
#include "ui/run_status_bar.h"
#include "ui/select_control_window.h"
#include "ui/selection_renderer.h"
#include "ui/system_window.h"
#include "ui/test_control_window.h"
#include "ui/text_conversion.h"
#include "ui/window_place.h"

namespace gorbex::ui {
namespace {

const wxSize kDesignedSize(1100, 740);
const wxSize kSmallestSize(640, 420);
constexpr double kTreeShare = 0.33;
constexpr double kQueueShare = 0.4;
constexpr const char* kPanes = "Panes";

std::vector<ListColumn> ReferenceColumns() {
  return {{"GUID", 88, false, 1},       {"Version", 50, false, 2},     {"Component", 104, false, 4},
          {"Registered", 84, false, 2}, {"Description", 84, false, 3}, {"Verdict", 270, false, 8}};
}

int PartOf(int all, double share) {
  return static_cast<int>(std::lround(all * share));
}

// Commands that only a window can run.
std::array<Command*, 11> OwnCommands(MainMenu& menu) {
  return {&menu.mnuHelpAbout,         &menu.mnuToolsFind,          &menu.mnuToolsFindNext,
          &menu.mnuToolsFindPrevious, &menu.mnuWindowFailed,       &menu.mnuQueueWhyFailed,
          &menu.mnuWindowNextPane,    &menu.mnuWindowPreviousPane, &menu.mnuPopupOpenFolder,
          &menu.mnuPopupCopyPath,     &menu.mnuPopupCopyGuid};
}

}  // namespace

MainFrame::MainFrame(Program& program, ShowFolder showFolder)
    : wxFrame(nullptr, wxID_ANY, "GorbexBuilder", wxDefaultPosition, wxDefaultSize,
              wxDEFAULT_FRAME_STYLE, "frmBuilder"),
      program_(program),
      showFolder_(std::move(showFolder)),
      ids_(*this),
      mailTimer_(this) {
  SetMinClientSize(FromDIP(kSmallestSize));
  SetSize(FromDIP(kDesignedSize));
  SetIcons(ProgramIcons());
  SelectionRenderer::Use();
  HandleCommands();
  HandlePopups();
  menus_ = std::make_unique<WindowMenus>(*this, program_.window.menu, ids_);
  // The status text is the program's; menus have no help texts to put in its place.
  SetStatusBarPane(-1);
  status_ = new RunStatusBar(this, program_.window, program_.run.events);
  SetStatusBar(status_);
  progress_ = std::make_unique<DesktopProgress>(*this, program_.run.events, program_.notice);
  MakePanes();
  BindData();
  BindQueue();
  FollowState();
  FollowTimer();
  MakeForms();
  FollowPosition();
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
    const bool shows = !details_->IsSplit();
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

void MainFrame::HandlePopups() {
  MainMenu& menu = program_.window.menu;
  menu.mnuPopupOpenFolder.SetHandler([this] { OpenFolder(); });
  menu.mnuPopupCopyPath.SetHandler([this] { CopyText(ToWx(pointed_.path)); });
  menu.mnuPopupCopyGuid.SetHandler([this] { CopyText(ToWx(pointed_.guid)); });
}

void MainFrame::OpenFolder() {
  const std::string folder = StripPath(pointed_.path);
  if (showFolder_(folder)) return;
  program_.dialogs.Show(
      {"The system cannot show the folder " + folder, Buttons::Ok, MessageIcon::Exclamation});
}

// They stay beside the window for its whole life and show themselves when their state says so.
void MainFrame::MakeForms() {
  new LogsWindow(this, program_.logs);
  new MissingWindow(this, program_.missing, ids_);
  new CheckWindow(this, program_.checkForm, ids_);
  dependencies_ = new DependenciesWindow(this, program_.dependencies, program_.picture,
                                         program_.registry, ids_);
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
  const auto splitter = [this](wxWindow* parent, double gravity) {
    auto* made = new wxSplitterWindow(parent, wxID_ANY, wxDefaultPosition, wxDefaultSize,
                                      wxSP_LIVE_UPDATE | wxSP_3DSASH);
    made->SetMinimumPaneSize(FromDIP(90));
    made->SetSashGravity(gravity);
    return made;
  };
  // All parts take part when the window changes its size.
  rows_ = splitter(this, 1 - kQueueShare);
  columns_ = splitter(rows_, kTreeShare);
  // Tab goes through them in the order in which they are made.
  treePane_ = MakeTreePane(columns_);
  details_ = splitter(columns_, 0.6);
  dataPane_ = MakeReferencesPane(details_);
  queuePane_ = MakeQueuePane(rows_);
  log_ = new LogPane(details_, program_.failed, program_.window.txtLogFile,
                     [this](const std::string& path) { program_.failureSteps.Open(path); });
  details_->Initialize(dataPane_);
  log_->Hide();
  columns_->SplitVertically(treePane_, details_);
  rows_->SplitHorizontally(columns_, queuePane_);
  auto* sizer = new wxBoxSizer(wxVERTICAL);
  sizer->Add(rows_, wxSizerFlags(1).Expand());
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
  pane->SetContent(tree_, new EmptyHint(pane, ids_,
                                        "No build project is open.\n"
                                        "Open one, make one, or add your VB projects.",
                                        {&menu.mnuFileOpen, &menu.mnuFileNewFrom,
                                         &menu.mnuTreePopupAddProject}));
  return pane;
}

Pane* MainFrame::MakeReferencesPane(wxWindow* parent) {
  auto* pane = new Pane(parent, "Project");
  block_ = new DetailsBlock(pane, program_.window);
  pane->AddHeader(block_);
  data_ = new StateList(pane, "lvwData", program_.window.lvwData, ReferenceColumns(),
                        StateList::Checks::No);
  pane->SetContent(data_,
                   new EmptyHint(pane, ids_, "Select a project to see what it references.", {}));
  return pane;
}

Pane* MainFrame::MakeQueuePane(wxWindow* parent) {
  auto* pane = new Pane(parent, "Build Queue");
  terms_ = new LinkLine(pane);
  pane->AddBesideCaption(terms_);
  queue_ = new QueueList(pane, program_.window.lvwQueue, program_.run.events, program_.outdated);
  auto* hint = new EmptyHint(pane, ids_, "Drag projects here from the tree, or add them all.",
                             {&program_.window.menu.mnuQueueAddAll});
  hint->SetName("queueHint");
  pane->SetContent(queue_, hint);
  const auto drop = [this] {
    if (program_.window.menu.mnuQueueAdd.IsPossible()) {
      program_.queue.lvwQueue_DragDrop("tvwProjects");
    }
  };
  queue_->SetDropTarget(new ProjectDropTarget(drop));
  hint->SetDropTarget(new ProjectDropTarget(drop));
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
            Popup(isProject ? menus_->TreePopup() : menus_->GroupPopup(),
                  node == nullptr ? PointedItem() : PointedNode(*node, program_.references));
          },
          [this](TreeNode& node) {
            if (node.KeyStartsWith(node_prefix::kProject)) DragProject(tree_);
          }};
}

void MainFrame::BindData() {
  data_->Bind(wxEVT_CONTEXT_MENU, [this](wxContextMenuEvent&) {
    const ListView& list = program_.window.lvwData;
    if (list.Selected() == nullptr) return;
    Popup(menus_->DataPopup(), PointedReference(*list.Selected(), list.Tag()));
  });
  data_->Bind(wxEVT_LIST_KEY_DOWN, [this](wxListEvent& event) {
    if (event.GetKeyCode() == WXK_F5) program_.display.RefreshReferences();
    event.Skip();
  });
}

void MainFrame::BindQueue() {
  queue_->Bind(wxEVT_CONTEXT_MENU, [this](wxContextMenuEvent&) {
    const ListRow* row = program_.window.lvwQueue.Selected();
    Popup(menus_->QueuePopup(), row == nullptr ? PointedItem() : PointedItem{row->Key(), ""});
  });
  queue_->Bind(wxEVT_LIST_ITEM_ACTIVATED, [this](wxListEvent&) {
    program_.display.FollowQueue();
    tree_->ShowSelected();
    tree_->SetFocus();
  });
  queue_->Bind(wxEVT_LIST_KEY_DOWN, [this](wxListEvent& event) {
    Command& remove = program_.window.menu.mnuQueueRemove;
    if (event.GetKeyCode() == WXK_DELETE && remove.IsPossible()) remove.Execute();
    event.Skip();
  });
  // Some systems' lists take the space bar for a double click and tell of no key.
  queue_->Bind(wxEVT_CHAR_HOOK, [this](wxKeyEvent& event) {
    ListRow* row = program_.window.lvwQueue.Selected();
    if (event.GetKeyCode() == WXK_SPACE && !event.HasAnyModifiers() && row != nullptr) {
      row->SetChecked(!row->Checked());
    } else {
      event.Skip();
    }
  });
}

void MainFrame::Popup(std::unique_ptr<wxMenu> menu, PointedItem item) {
  pointed_ = std::move(item);
  MainMenu& commands = program_.window.menu;
  const bool hasPath = !pointed_.path.empty();
  commands.mnuPopupOpenFolder.enabled.Set(
      hasPath && FolderExists(program_.platform.files, StripPath(pointed_.path)));
  commands.mnuPopupCopyPath.enabled.Set(hasPath);
  commands.mnuPopupCopyGuid.enabled.Set(!pointed_.guid.empty());
  UpdateWindowUI();
  PopupMenu(menu.get());
}

void MainFrame::FollowState() {
  frmBuilder& window = program_.window;
  const auto follow = [this](auto& signal, auto listener) {
    subscriptions_.push_back(signal.Connect(listener));
  };
  follow(window.caption.changed, [this](const std::string& text) { SetTitle(ToWx(text)); });
  follow(window.txtLogFile.visible.changed, [this](const bool&) { ShowFailures(); });
  follow(program_.failed.changed, [this] { ShowFailures(); });
  follow(program_.compile.ended, [this](const CompileEnded& compile) {
    if (!program_.work.Goes(Task::Run)) log_->GoTo(compile.path);
  });
  follow(window.lvwQueue.selectionChanged, [this] {
    const ListRow* row = program_.window.lvwQueue.Selected();
    if (row != nullptr && details_->IsSplit()) log_->GoTo(row->Key());
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
  program_.editor.openBySystem = showFolder_;
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
  follow(window.position.changed, [this](const std::optional<WindowPosition>& position) {
    if (position && !isFollowing_ && isPlaced_) MoveTo(*position);
  });
}

// The state knows the window's place, or the one it would have if it were not maximized.
void MainFrame::FollowPosition() {
  // A painted window has its final size; before that, place and panes are not reliable.
  queuePane_->Bind(wxEVT_PAINT, [this](wxPaintEvent& event) {
    event.Skip();
    if (!isPainted_) CallAfter([this] { Place(); });
    isPainted_ = true;
  });
  const auto tell = [this](wxEvent& event) {
    event.Skip();
    TellPosition();
  };
  Bind(wxEVT_MOVE, tell);
  Bind(wxEVT_SIZE, tell);
  Bind(wxEVT_SIZE, [this](wxSizeEvent& event) {
    event.Skip();
    CallAfter([this] { KeepRoom(); });
  });
}

void MainFrame::TellPosition() {
  if (!isPlaced_ || !IsShown() || IsMaximized() || IsIconized() || IsFullScreen()) return;
  const wxRect place(ToDIP(GetPosition()), ToDIP(GetSize()));
  isFollowing_ = true;
  program_.window.position.Set(InTwips(place));
  isFollowing_ = false;
}

void MainFrame::Place() {
  isPlaced_ = true;
  ShowBars(*this);
  if (const auto& position = program_.window.position.Get()) {
    MoveTo(*position);
  } else {
    SetSize(InTheMiddle(GetSize(), wxDisplay(this).GetClientArea()));
  }
  Layout();
  RestoreLayout();
  tree_->ShowSelected();
  queue_->ShowSelected();
  TellPosition();
}

void MainFrame::MoveTo(const WindowPosition& position) {
  const wxRect place = InDips(position);
  const wxRect wanted(FromDIP(place.GetPosition()), FromDIP(place.GetSize()));
  SetSize(OnSomeScreen(wanted, Screens(), FromDIP(kSmallestSize)));
}

// A timer whose interval is 0 never fires.
void MainFrame::FollowTimer() {
  Timer& timer = program_.window.tmrOutlook;
  const auto set = [this, &timer] {
    mailTimer_.Stop();
    const int interval = timer.interval.Get();
    if (timer.enabled.Get() && interval > 0) mailTimer_.Start(interval);
  };
  subscriptions_.push_back(timer.enabled.changed.Connect([set](const bool&) { set(); }));
  subscriptions_.push_back(timer.interval.changed.Connect([set](const int&) { set(); }));
  Bind(
      wxEVT_TIMER, [&timer](wxTimerEvent&) { timer.elapsed.Emit(); }, mailTimer_.GetId());
  set();
}

void MainFrame::ShowFailures() {
  const bool visible = program_.window.txtLogFile.visible.Get() && !program_.failed.All().empty();
  if (visible == details_->IsSplit()) return;
  if (visible) {
    details_->SplitHorizontally(dataPane_, log_, details_->GetClientSize().y / 2);
    KeepRoom();
  } else {
    details_->Unsplit(log_);
    GiveRoomBack();
  }
}

// A small window shares its height between references, failures and queue so that each shows a few
// rows. Less is only what the user wants.
void MainFrame::KeepRoom() {
  if (!details_->IsSplit() || !isPlaced_) return;
  constexpr int kRows = 3;
  const int references = dataPane_->HeightWith(data_->HeightOf(kRows));
  const int failures = details_->GetSashSize() + details_->GetMinimumPaneSize();
  const int queue = rows_->GetSashSize() + queuePane_->HeightWith(queue_->HeightOf(kRows));
  const int top = rows_->GetSashPosition();
  const int wanted = std::min(references + failures, rows_->GetClientSize().y - queue);
  if (top < wanted) {
    if (queueTop_ == 0) queueTop_ = top;
    queuePushed_ = wanted;
    rows_->SetSashPosition(wanted);
  }
  const int most = std::max(top, wanted) - failures;
  if (details_->GetSashPosition() < std::min(references, most)) {
    details_->SetSashPosition(std::min(references, most));
  }
}

void MainFrame::GiveRoomBack() {
  if (queueTop_ != 0 && rows_->GetSashPosition() == queuePushed_) {
    rows_->SetSashPosition(queueTop_);
  }
  queueTop_ = 0;
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

void MainFrame::RestoreLayout() {
  const LayoutStore store(program_.registry);
  const auto panes = store.Read(kPanes, 4);
  const auto share = [&](std::size_t part, double designed) {
    return panes.empty() ? designed : static_cast<double>(panes[part]) / panes[part + 1];
  };
  columns_->SetSashPosition(PartOf(columns_->GetClientSize().x, share(0, kTreeShare)));
  rows_->SetSashPosition(-PartOf(rows_->GetClientSize().y, share(2, kQueueShare)));
  for (StateList* list : {data_, static_cast<StateList*>(queue_)}) {
    const auto widths =
        store.Read(list->GetName().utf8_string(), static_cast<std::size_t>(list->GetColumnCount()));
    if (!widths.empty()) list->SetColumnWidths(widths);
  }
}

void MainFrame::StoreLayout() {
  LayoutStore store(program_.registry);
  GiveRoomBack();
  dependencies_->StorePlace();
  // Tree and queue, each with all that they share: the next window may have another size.
  const wxSize all = ToDIP(rows_->GetClientSize());
  store.Write(kPanes, {ToDIP(columns_->GetSashPosition()), all.x,
                       all.y - ToDIP(rows_->GetSashPosition()), all.y});
  for (const StateList* list : {data_, static_cast<StateList*>(queue_)}) {
    if (list->HasOwnWidths()) store.Write(list->GetName().utf8_string(), list->ColumnWidths());
  }
}

void MainFrame::OnClose(wxCloseEvent& event) {
  // Only the system can ask now. The code that waits for the answer still needs the window.
  if (openDialogs_.Any()) {
    isCloseWanted_ = true;
    if (event.CanVeto()) event.Veto();
    return;
  }
  if (!program_.shutDown.Form_QueryUnload() && event.CanVeto()) {
    event.Veto();
    return;
  }
  StoreLayout();
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
  const bool isCloseDue = isCloseWanted_ && !openDialogs_.Any();
  if (isCloseDue) isCloseWanted_ = false;
  if (isCloseDue || program_.shutDown.Due()) CallAfter([this] { Close(); });
}

}  // namespace gorbex::ui
