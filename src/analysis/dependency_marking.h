#pragma once

#include <functional>
#include <optional>
#include <string>
#include <string_view>
#include <vector>

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

  /// Sets image, check mark and colour of a reference or object node; other nodes are left alone.
  void MarkReferenceNode(TreeNode& node);

  /// See ProjectViews.
  void MarkBranch(const ProjectBranch& branch);
  void MarkBranches(const std::vector<ProjectBranch>& branches);
  void ScanBranches(const std::vector<ProjectBranch>& branches);

  /// Marks every node of the tree again.
  void mnuToolsDependancies_Click();

  static void ColorItem(ListRow& row, Colour colour);

 private:
  [[nodiscard]] Verdict Judge(std::string_view firstField, const ListRow& row) const;
  void ExpandShownProject();

  /// A reference node's value taken apart, and who of the group builds its component.
  struct Judged {
    std::string_view firstField;
    std::string_view component;
    std::optional<ExecutableIndex::Entry> producer;
  };
  [[nodiscard]] Judged JudgeNode(Procedure& on, TreeNode& node) const;
  [[nodiscard]] Image VerdictOf(Procedure& on, const TreeNode& node, const Judged& judged) const;
  static void Show(TreeNode& node, Image image);

  /// Whose binaries make a reference a dependency: of the records read before, or of all.
  enum class Group { Earlier, Whole };
  void MarkRead(const ProjectBranch& branch, Group group);
  void MarkRead(TreeNode& node, const ProjectBranch& branch, Group group);
  void Scan(const std::function<void(Procedure& on)>& markAll);

  frmBuilder& window_;
  const ReferenceResolution& references_;
  const GroupDependency& group_;
  ActivityLog& log_;
  ErrorReport& report_;
};

}  // namespace gorbex
