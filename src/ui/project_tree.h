#pragma once

#include <wx/bmpbndl.h>
#include <wx/vector.h>
#include <wx/vlbox.h>

#include <functional>
#include <vector>

#include "core/tree_view.h"
#include "ui/hover_tip.h"

namespace gorbex::ui {

/// Draws a tree's state, a row for every node whose branch is open. Only the rows in sight are ever
/// measured and painted, so a hundred thousand open nodes cost what ten do.
class ProjectTree : public wxVListBox {
 public:
  /// Gestures on a node; null means the space beside the nodes.
  struct Gestures {
    std::function<void(TreeNode*)> pressed;
    std::function<void(TreeNode&)> selected;  ///< with the keyboard
    std::function<void(TreeNode*)> menuAsked;
    std::function<void(TreeNode&)> dragged;
  };

  ProjectTree(wxWindow* parent, TreeView& state, Gestures gestures);

  /// The node of a row; null when there is no such row.
  [[nodiscard]] TreeNode* NodeOf(int row) const;

  /// Scrolls the selected node to the middle, unless it is in sight.
  void ShowSelected();

  /// Where a node is shown, in the control's own pixels; empty while it is out of sight.
  [[nodiscard]] wxRect PlaceOf(const TreeNode& node) const;

 private:
  struct Row {
    const TreeNode* node;
    int depth;
  };

  void OnDrawItem(wxDC& dc, const wxRect& rect, size_t row) const override;
  void OnDrawBackground(wxDC& dc, const wxRect& rect, size_t row) const override;
  [[nodiscard]] wxCoord OnMeasureItem(size_t /*row*/) const override { return rowHeight_; }

  void Follow();
  void Measure();
  void BindMouse();
  void BindKeys();
  void CatchUp();
  void Add(const TreeNode& node, int depth);
  void NoticeMoves();
  void ScrollToSelected();
  void Reveal(const TreeNode& node);
  void Toggle(const TreeNode& node);
  void Choose(int row);
  [[nodiscard]] int RowOf(const TreeNode* node) const;
  [[nodiscard]] bool IsOnButton(const wxPoint& point, int row) const;
  [[nodiscard]] int RowLeft(const Row& row) const;
  [[nodiscard]] int TextLeft(const Row& row) const;
  void DrawButton(wxDC& dc, const wxRect& rect, const Row& row) const;
  void DrawIcons(wxDC& dc, const wxRect& rect, const Row& row) const;
  void DrawTexts(wxDC& dc, const wxRect& room, const TreeNode& node) const;
  void OnPress(wxMouseEvent& event);
  void OnMotion(wxMouseEvent& event);
  void OnKey(wxKeyEvent& event);
  bool StepInto(const TreeNode& node, int key);
  void OnChar(wxKeyEvent& event);
  void GoToTyped();
  void ShowToolTip(int row);

  TreeView& state_;
  Gestures gestures_;
  int icon_ = 0;  ///< the size of an icon
  wxVector<wxBitmapBundle> images_;
  wxBitmapBundle registered_;
  wxBitmapBundle unregistered_;
  std::vector<Row> rows_;
  wxCoord rowHeight_ = 0;  ///< of every row
  Subscriptions subscriptions_;
  bool isStale_ = true;      ///< which rows there are has changed
  bool isFaded_ = true;      ///< how a row looks has changed
  bool isUnchosen_ = true;   ///< the selection has changed
  bool isUntouched_ = true;  ///< nobody has moved in the tree since something was opened
  wxPoint pressedAt_;
  TreeNode* pressed_ = nullptr;  ///< may be dragged
  HoverTip tip_;
  int tipRow_ = wxNOT_FOUND;  ///< whose tip it is
  wxString typed_;            ///< letters of a file name
  long typedAt_ = 0;          ///< when the last of them was typed, in milliseconds
};

}  // namespace gorbex::ui
