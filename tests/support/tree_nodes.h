#pragma once

#include <cstddef>
#include <vector>

#include "core/tree_view.h"

namespace gorbex::test {

/// Every node of a tree, each before its children.
inline std::vector<const TreeNode*> NodesOf(const TreeView& tree) {
  std::vector<const TreeNode*> nodes(tree.Tops().begin(), tree.Tops().end());
  for (std::size_t i = 0; i < nodes.size(); ++i) {
    const auto& children = nodes[i]->Children();
    nodes.insert(nodes.begin() + static_cast<std::ptrdiff_t>(i + 1), children.begin(),
                 children.end());
  }
  return nodes;
}

}  // namespace gorbex::test
