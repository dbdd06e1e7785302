#pragma once

#include <string>

#include "analysis/group_dependency.h"
#include "core/failed_projects.h"
#include "core/main_window.h"
#include "core/procedure.h"

namespace gorbex {

/// Marks rows of the queue by how their projects hang together, and by what failed.
class QueueMarks {
 public:
  QueueMarks(frmBuilder& window, const GroupDependency& group, const FailedProjects& failed,
             ErrorReport& report)
      : window_(window), group_(group), failed_(failed), report_(report) {}

  /// Marks the rows of a project and of all that it uses, or of all that use it, directly or
  /// through others. Other marks stay. The status bar tells how many rows these are, and how many
  /// of the projects are not in the queue. Error 5 when the project has no record.
  void MarkWithUses(const std::string& path) { Mark(path, Direction::Uses); }
  void MarkWithUsers(const std::string& path) { Mark(path, Direction::Users); }

  /// For the selected row.
  void mnuQueueMarkUses_Click();
  void mnuQueueMarkUsers_Click();

  /// Marks the rows that failed and unmarks all others.
  void mnuQueueMarkFailed_Click();

 private:
  enum class Direction { Uses, Users };

  void Mark(const std::string& path, Direction direction);

  frmBuilder& window_;
  const GroupDependency& group_;
  const FailedProjects& failed_;
  ErrorReport& report_;
};

}  // namespace gorbex
