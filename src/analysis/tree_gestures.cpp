#include "analysis/tree_gestures.h"

#include "core/node_key.h"

namespace gorbex {

bool TreeGestures::tvwProjects_MouseDown(TreeNode* node, MouseButton button) {
  window_.txtLogFile.visible.Set(false);
  if (node == nullptr) return false;
  window_.tvwProjects.Select(node);
  display_.ShowProjectDetails(*node);
  return button == MouseButton::Right && node->KeyStartsWith(node_prefix::kProject);
}

void TreeGestures::lvwData_KeyDown(int keyCode) {
  constexpr int kF5 = 116;
  if (keyCode == kF5) display_.RefreshReferences();
}

}  // namespace gorbex
