#pragma once

#include "analysis/project_display.h"
#include "core/main_window.h"

namespace gorbex {

enum class MouseButton { Left, Right };

/// What the mouse does in the project tree and the keyboard in the detail list.
class TreeGestures {
 public:
  TreeGestures(frmBuilder& window, ProjectDisplay& display) : window_(window), display_(display) {}

  /// Selects the node under the pointer, null for none, and shows its project. True when the tree's
  /// pop-up menu is wanted.
  [[nodiscard]] bool tvwProjects_MouseDown(TreeNode* node, MouseButton button);

  /// Judges a clicked reference again.
  void tvwProjects_NodeClick(TreeNode& node) { display_.MarkReferenceNode(node); }

  /// A key by its system code: F5 judges the shown references again.
  void lvwData_KeyDown(int keyCode);

 private:
  frmBuilder& window_;
  ProjectDisplay& display_;
};

}  // namespace gorbex
