#pragma once

#include <cstddef>
#include <string>
#include <vector>

#include "core/tree_view.h"

namespace gorbex {

/// What reading one project added to the tree.
struct ProjectBranch {
  std::size_t earlierRecords = 0;  ///< records in the model before the project's own
  TreeNode* project = nullptr;     ///< null when nothing was added
  bool isRead = false;             ///< false when the reading failed
};

/// What reading projects asks of those who judge and show them.
class ProjectViews {
 public:
  virtual ~ProjectViews() = default;

  /// Marks the references of a branch whose record is not in the model yet.
  virtual void MarkBranch(const ProjectBranch& branch) = 0;

  /// Marks branches that were read one after the other into an empty model, each as if it had been
  /// marked and shown when it was read.
  virtual void MarkBranches(const std::vector<ProjectBranch>& branches) = 0;

  /// As MarkBranches(), followed by the scan of all nodes, with every reference judged once.
  virtual void ScanBranches(const std::vector<ProjectBranch>& branches) = 0;

  virtual void ShowProjectReferences(const std::string& projectPath) = 0;
  virtual void ShowProjectDetails(TreeNode& node) = 0;
  virtual void RefreshQueue() = 0;
  virtual void mnuToolsDependancies_Click() = 0;
};

}  // namespace gorbex
