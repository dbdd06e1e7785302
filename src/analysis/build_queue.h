#pragma once

#include <string>
#include <string_view>
#include <vector>

#include "analysis/group_dependency.h"
#include "analysis/queue_arrangement.h"
#include "core/dialogs.h"
#include "core/main_window.h"
#include "core/procedure.h"
#include "platform/file_system.h"

namespace gorbex {

/// The build queue and its commands. A row's key is its project's path.
class BuildQueue {
 public:
  BuildQueue(frmBuilder& window, const GroupDependency& group, const FileReader& files,
             Dialogs& dialogs, ErrorReport& report)
      : window_(window), group_(group), files_(files), dialogs_(dialogs), report_(report) {}

  /// Numbers the rows.
  void RefreshQueue();

  /// Adds a checked row for a project; false when the project is queued already.
  bool Add(const std::string& path);

  /// Shows a project's compatibility and the date of its binary in its row, if it has one.
  void ShowProjectFacts(const std::string& path);

  /// Adds the tree's selected project when the dragged control is the tree; a project that is
  /// already queued does not change.
  void lvwQueue_DragDrop(std::string_view sourceControl);

  /// Adds the project that the tree's selected node belongs to, or every project of the tree.
  void mnuQueueAdd_Click();
  void mnuQueueAddAll_Click();

  /// Moves every dependent row below the one it depends on. Moved rows lose mark, compatibility and
  /// date.
  void mnuQueueArrange_Click();

  void mnuQueueMoveUp_Click();
  void mnuQueueMoveDown_Click();
  void mnuQueueRemove_Click();
  void mnuQueueEmpty_Click();
  void mnuQueueMarkAll_Click();
  void mnuQueueUnMarkAll_Click();

 private:
  enum class Direction { Up, Down };

  void Move(const std::string& procedure, Direction direction);
  void MarkAll(bool checked);
  [[nodiscard]] std::string DependencyOf(const clsMember& member) const;
  void ShowProjectFacts(ListRow& row, const clsMember& member) const;
  void TellMoved(const QueueArrangement& plan);
  void Apply(const QueueArrangement& plan, std::vector<std::size_t>& shown);

  frmBuilder& window_;
  const GroupDependency& group_;
  const FileReader& files_;
  Dialogs& dialogs_;
  ErrorReport& report_;
};

}  // namespace gorbex
