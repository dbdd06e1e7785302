#pragma once

#include <wx/frame.h>
#include <wx/timer.h>

#include <memory>
#include <string>
#include <vector>

#include "app/program.h"
#include "ui/command_ids.h"
#include "ui/desktop_progress.h"
#include "ui/details_block.h"
#include "ui/find_bar.h"
#include "ui/frame_place.h"
#include "ui/link_line.h"
#include "ui/log_pane.h"
#include "ui/open_dialogs.h"
#include "ui/pane.h"
#include "ui/pane_cycle.h"
#include "ui/pane_layout.h"
#include "ui/popup_menus.h"
#include "ui/project_tree.h"
#include "ui/queue_list.h"
#include "ui/run_status_bar.h"
#include "ui/window_menus.h"

namespace gorbex::ui {

/// The main window: draws the program's window state and turns gestures into its commands.
class MainFrame : public wxFrame {
 public:
  /// The program must outlive the window.
  MainFrame(Program& program, const ShowFolder& showFolder);
  ~MainFrame() override;

  /// Ends the program as the system wants it: closes the window as its user does. While a dialog is
  /// open, nobody may be there to answer: all dialogs get the answers of their Escape keys, work is
  /// ended, and the window closes. It still asks about unsaved changes, until this is called again.
  void End();

  /// As End, with the user's session: a question about unsaved changes is waited for.
  void EndWithSession();

 private:
  void MakeForms();
  void HandleCommands();
  void MakePanes();
  void MakeFindBar();
  [[nodiscard]] Pane* MakeTreePane(wxWindow* parent);
  [[nodiscard]] Pane* MakeReferencesPane(wxWindow* parent);
  [[nodiscard]] Pane* MakeQueuePane(wxWindow* parent);
  [[nodiscard]] ProjectTree::Gestures TreeGesturesOf();
  void BindLists();
  void FollowState();
  void FollowSize();
  void FollowTimer();
  void ShowFailures();
  void ShowEmptyPanes();
  void ShowMissing();
  void ShowPointer(MousePointer pointer);
  void Place();
  void OnClose(wxCloseEvent& event);
  void OnIdle(wxIdleEvent& event);
  void CloseIfDue();
  void TellNotCompared();

  Program& program_;
  CommandIds ids_;
  FramePlace place_;
  PopupMenus popups_;
  std::unique_ptr<WindowMenus> menus_;
  std::unique_ptr<PaneLayout> layout_;
  LogPane* log_ = nullptr;
  DetailsBlock* block_ = nullptr;
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
  wxTimer mailTimer_;
  OpenDialogs openDialogs_;
  bool isCloseWanted_ = false;  ///< by the system, while a dialog was open
  bool isEnding_ = false;       ///< whatever the user answers
  bool isAsking_ = false;       ///< whether to close
  bool isBusyCursor_ = false;
  bool isPainted_ = false;
  std::vector<std::string> notCompared_;  ///< projects that a scan left out, with reasons
  Subscriptions subscriptions_;
};

}  // namespace gorbex::ui
