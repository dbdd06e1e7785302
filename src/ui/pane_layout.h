#pragma once

#include "ui/layout_store.h"
#include "ui/pane.h"
#include "ui/state_list.h"

namespace gorbex::ui {

/// How the main window's parts share its room: the tree beside the references, both above the
/// queue, and between references and queue the failed projects while they are shown.
class PaneLayout {
 public:
  struct Parts {
    Pane* tree;
    Pane* references;
    Pane* queue;
    StateList* referenceList;
    StateList* queueList;
    wxWindow* failures;
  };

  /// Makes the splitters, in which the parts are then made. All are windows of the frame.
  explicit PaneLayout(wxWindow* frame);

  [[nodiscard]] wxWindow* Rows() const { return rows_; }        ///< holds columns and queue
  [[nodiscard]] wxWindow* Columns() const { return columns_; }  ///< holds tree and details
  [[nodiscard]] wxWindow* Details() const { return details_; }  ///< holds references and failures

  /// Puts the parts into their places. The failures are hidden.
  void Join(const Parts& parts);

  [[nodiscard]] bool ShowsFailures() const { return details_->IsSplit(); }
  void ShowFailures(bool shown);

  /// Leaves room for a few rows of references, failures and queue in a small window, unless the
  /// user gave them less. To be called when the window has another size.
  void KeepRoom();

  /// Takes the stored shares and column widths, or the designed ones, once the window has its size.
  void Restore(const LayoutStore& store);
  void Store(LayoutStore& store);

 private:
  void GiveRoomBack();

  wxSplitterWindow* rows_;
  wxSplitterWindow* columns_;
  wxSplitterWindow* details_;
  Parts parts_{};
  bool isRestored_ = false;
  int queueTop_ = 0;     ///< before the failures took room from the queue; 0 when they have not
  int queuePushed_ = 0;  ///< where its top is since then
};

}  // namespace gorbex::ui
