#pragma once

#include "core/node_key.h"
#include "core/tree_view.h"

namespace gorbex {

[[nodiscard]] inline bool IsReferenceNode(const TreeNode& node) {
  return node.KeyStartsWith(node_prefix::kReference) || node.KeyStartsWith(node_prefix::kObject);
}

/// The project's node that a node is, or belongs to; null when there is none.
[[nodiscard]] inline const TreeNode* ProjectAbove(const TreeNode* node) {
  while (node != nullptr && !node->KeyStartsWith(node_prefix::kProject)) node = node->Parent();
  return node;
}

/// Visits the reference and object nodes of a project's node.
template <class Visit>
void ForEachReference(const TreeNode& project, const Visit& visit) {
  for (const TreeNode* heading : project.Children()) {
    if (!heading->KeyStartsWith(node_prefix::kReferences) &&
        !heading->KeyStartsWith(node_prefix::kObjects)) {
      continue;
    }
    for (TreeNode* node : heading->Children()) visit(*node);
  }
}

}  // namespace gorbex
