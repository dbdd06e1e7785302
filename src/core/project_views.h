#pragma once

#include <string>

#include "core/tree_view.h"

namespace gorbex {

/// The calls by which the reader of projects has them marked and shown.
class ProjectViews {
 public:
  virtual ~ProjectViews() = default;

  /// Marks the references of a project whose record is not in the model yet.
  virtual void MarkProject(const TreeNode& project) = 0;

  /// The scan that ends loading: marks every node, and expands each project whose detail list would
  /// show an invalid reference.
  virtual void ScanLoadedProjects() = 0;

  virtual void ShowProjectReferences(const std::string& projectPath) = 0;
  virtual void ShowProjectDetails(TreeNode& node) = 0;
  virtual void RefreshQueue() = 0;
  virtual void mnuToolsDependancies_Click() = 0;
};

}  // namespace gorbex
