#pragma once

#include <vector>

#include "core/tree_view.h"

namespace gorbex::test {

/// Every node of a tree, each before its children.
[[nodiscard]] inline std::vector<TreeNode*> NodesOf(const TreeView& tree) {
  std::vector<TreeNode*> nodes;
  std::vector<TreeNode*> next(tree.Tops().rbegin(), tree.Tops().rend());
  while (!next.empty()) {
    nodes.push_back(next.back());
    next.pop_back();
    const auto& children = nodes.back()->Children();
    next.insert(next.end(), children.rbegin(), children.rend());
  }
  return nodes;
}

}  // namespace gorbex::test
