#pragma once

#include <string>

#include "analysis/build_queue.h"
#include "analysis/dependency_marking.h"
#include "core/main_window.h"
#include "core/procedure.h"
#include "core/project_views.h"

namespace gorbex {

/// Shows the selected project: the details labels and the references in the detail
/// list.
class ProjectDisplay : public ProjectViews {
 public:
  ProjectDisplay(frmBuilder& window, DependencyMarking& marking, BuildQueue& queue,
                 ErrorReport& report)
      : window_(window), marking_(marking), queue_(queue), report_(report) {}

  /// Selects the node under the pointer, null for none, and shows its project. True when a right
  /// click opens the tree's pop-up menu there.
  bool tvwProjects_MouseDown(TreeNode* node);

  /// Shows the project that a tree node belongs to; shows nothing for other nodes.
  void ShowProjectDetails(TreeNode& node) override;

  /// Fills the detail list, unless it shows that project already.
  void ShowProjectReferences(const std::string& projectPath) override;

  // The same project is selected in the tree and in the queue. Both change nothing when it is
  // selected already or not there.

  /// Selects the project of the queue's selected row in the tree, and shows it.
  void FollowQueue();

  /// Selects the row of the project that the tree's selected node belongs to.
  void FollowTree();

  /// Selects a project in the tree and one of its references, by its whole value, in the detail
  /// list. False when the project is not in the tree.
  bool ShowReference(const std::string& project, const std::string& reference);

  /// Fills the detail list again with new verdicts; the selection stays.
  void RefreshReferences();

  /// Replaces a component's path or identity in a project's record and nodes, as its file has it
  /// now. Error 5 when the project has no record.
  void FollowFile(const std::string& project, const std::string& oldText,
                  const std::string& newText);

  /// As FollowFile, and judges the project's references again, in the detail list too.
  void RepointReferences(const std::string& project, const std::string& oldText,
                         const std::string& newText);

  void MarkReferenceNode(TreeNode& node) { marking_.MarkReferenceNode(node); }
  void MarkAll() { marking_.MarkAll(); }
  void MarkProject(const TreeNode& project) override { marking_.MarkProject(project); }
  void ScanLoadedProjects() override { marking_.ScanLoadedProjects(); }
  void RefreshQueue() override { queue_.RefreshQueue(); }
  void mnuToolsDependancies_Click() override { marking_.mnuToolsDependancies_Click(); }

 private:
  void ShowLabels(Procedure& on, const TreeNode& project, const clsMember& member);
  [[nodiscard]] ListRow* RowOfSelectedNode() const;

  frmBuilder& window_;
  DependencyMarking& marking_;
  BuildQueue& queue_;
  ErrorReport& report_;
};

}  // namespace gorbex
