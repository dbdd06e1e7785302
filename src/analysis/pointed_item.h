#pragma once

#include <string>

#include "analysis/reference_resolution.h"
#include "core/list_view.h"
#include "core/tree_view.h"

namespace gorbex {

/// The item that the user points at in the window.
struct PointedItem {
  std::string path;  ///< full; empty for none
  std::string guid;  ///< with braces; empty for none
};

/// The component of a reference, the file of a member, else the project that the node is part of.
[[nodiscard]] PointedItem PointedNode(const TreeNode& node, const ReferenceResolution& references);

/// The component of a row of the detail list, which shows this project.
[[nodiscard]] PointedItem PointedReference(const ListRow& row, const std::string& project);

}  // namespace gorbex
