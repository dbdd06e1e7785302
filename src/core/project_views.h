#pragma once

#include <string>

#include "core/tree_view.h"

namespace gorbex {

/// What reading projects asks of those who judge and show them.
class ProjectViews {
 public:
  virtual ~ProjectViews() = default;

  virtual void MarkReferenceNode(TreeNode& node) = 0;
  virtual void ShowProjectReferences(const std::string& projectPath) = 0;
  virtual void ShowProjectDetails(TreeNode& node) = 0;
  virtual void RefreshQueue() = 0;
  virtual void mnuToolsDependancies_Click() = 0;
};

}  // namespace gorbex
