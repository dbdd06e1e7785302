#pragma once

#include <wx/frame.h>
#include <wx/splitter.h>
#include <wx/timer.h>

#include <functional>
#include <memory>
#include <string>
#include <vector>

#include "analysis/pointed_item.h"
#include "app/program.h"
#include "ui/command_ids.h"
#include "ui/dependencies_window.h"
#include "ui/desktop_progress.h"
#include "ui/details_block.h"
#include "ui/find_bar.h"
#include "ui/link_line.h"
#include "ui/log_pane.h"
#include "ui/open_dialogs.h"
#include "ui/pane.h"
#include "ui/pane_cycle.h"
#include "ui/project_tree.h"
#include "ui/queue_list.h"
#include "ui/run_status_bar.h"
#include "ui/window_menus.h"

namespace gorbex::ui {

/// The main window: draws the program's window state and turns gestures into its commands.
class MainFrame : public wxFrame {
 public:
  /// Shows a folder, or opens a file, as the system does it; false when it cannot.
  using ShowFolder = std::function<bool(const std::string& folder)>;

  /// The program must outlive the window.
  MainFrame(Program& program, ShowFolder showFolder);
  ~MainFrame() override;

 private:
  void MakeForms();
  void HandleCommands();
  void HandlePopups();
  void MakePanes();
  void MakeFindBar();
  [[nodiscard]] Pane* MakeTreePane(wxWindow* parent);
  [[nodiscard]] Pane* MakeReferencesPane(wxWindow* parent);
  [[nodiscard]] Pane* MakeQueuePane(wxWindow* parent);
  [[nodiscard]] ProjectTree::Gestures TreeGesturesOf();
  void BindData();
  void BindQueue();
  void FollowState();
  void FollowPosition();
  void TellPosition();
  void FollowTimer();
  void ShowFailures();
  void KeepRoom();
  void GiveRoomBack();
  void ShowEmptyPanes();
  void ShowMissing();
  void ShowPointer(MousePointer pointer);
  void Place();
  void MoveTo(const WindowPosition& position);
  void RestoreLayout();
  void StoreLayout();
  void OnClose(wxCloseEvent& event);
  void OnIdle(wxIdleEvent& event);
  void TellNotCompared();
  void OpenFolder();
  void Popup(std::unique_ptr<wxMenu> menu, PointedItem item);

  Program& program_;
  ShowFolder showFolder_;
  CommandIds ids_;
  std::unique_ptr<WindowMenus> menus_;
  wxSplitterWindow* rows_ = nullptr;     ///< everything else above the queue
  wxSplitterWindow* columns_ = nullptr;  ///< the tree beside what is known of a project
  wxSplitterWindow* details_ = nullptr;  ///< references above the compiler's log
  LogPane* log_ = nullptr;
  DetailsBlock* block_ = nullptr;
  DependenciesWindow* dependencies_ = nullptr;
  Pane* treePane_ = nullptr;
  Pane* dataPane_ = nullptr;
  Pane* queuePane_ = nullptr;
  ProjectTree* tree_ = nullptr;
  StateList* data_ = nullptr;
  QueueList* queue_ = nullptr;
  LinkLine* terms_ = nullptr;
  RunStatusBar* status_ = nullptr;
  FindBar* find_ = nullptr;
  std::unique_ptr<DesktopProgress> progress_;
  std::unique_ptr<PaneCycle> cycle_;
  PointedItem pointed_;  ///< that the last pop-up menu was opened on
  wxTimer mailTimer_;
  OpenDialogs openDialogs_;
  bool isCloseWanted_ = false;  ///< by the system, while a dialog was open
  bool isBusyCursor_ = false;
  bool isPainted_ = false;
  bool isPlaced_ = false;
  bool isFollowing_ = false;  ///< the window stores its position; it does not move to it
  int queueTop_ = 0;  ///< before the failed projects took room from the queue; 0 when they have not
  int queuePushed_ = 0;                   ///< where its top is since then
  std::vector<std::string> notCompared_;  ///< projects that a scan left out, with reasons
  std::vector<Subscription> subscriptions_;
};

}  // namespace gorbex::ui
