#pragma once

#include <functional>
#include <string>
#include <string_view>

#include "analysis/group_dependency.h"
#include "analysis/reference_resolution.h"
#include "core/activity_log.h"
#include "core/main_window.h"
#include "core/procedure.h"
#include "core/project_views.h"

namespace gorbex {

/// Marks references in the tree and in the detail list by their verdict.
class DependencyMarking {
 public:
  DependencyMarking(frmBuilder& window, const ReferenceResolution& references,
                    const GroupDependency& group, ActivityLog& log, ErrorReport& report)
      : window_(window), references_(references), group_(group), log_(log), report_(report) {}

  /// Adds one row for a reference value to the detail list, whose tag names the project.
  void ShowReferenceRow(const std::string& value);

  /// Sets image, check mark and colour of a reference or object node; other nodes do not change.
  void MarkReferenceNode(TreeNode& node);

  /// See ProjectViews.
  void MarkProject(const TreeNode& project);
  void ScanLoadedProjects();

  /// From now on loading marks nothing, for a command that judges references in another way.
  void LeaveLoadedUnmarked() { marksLoaded_ = false; }

  /// Marks every node of the tree again.
  void mnuToolsDependancies_Click();
  void MarkAll();  ///< without a word in status bar and log

  /// Every node of the tree has been marked.
  Signal<> marked;

 private:
  using Mark = std::function<void(TreeNode& project, TreeNode& node)>;

  [[nodiscard]] Verdict Judge(std::string_view firstField, std::string_view version,
                              std::string_view component, const std::string& project) const;
  void ExpandShownProject();
  void MarkLoadedNode(TreeNode& project, TreeNode& node);
  void Scan(const Mark& mark);

  frmBuilder& window_;
  const ReferenceResolution& references_;
  const GroupDependency& group_;
  ActivityLog& log_;
  ErrorReport& report_;
  bool marksLoaded_ = true;
};

}  // namespace gorbex
