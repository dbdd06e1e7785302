#pragma once

#include <string>

#include "core/editor.h"
#include "core/failed_projects.h"
#include "core/signal.h"

namespace gorbex {

/// Goes from failure to failure and opens each where it is. Projects that a run skipped because of
/// another one's failure are passed over. The first failure follows the last.
class FailureSteps {
 public:
  FailureSteps(const FailedProjects& failed, Editor& editor) : failed_(failed), editor_(editor) {}

  /// Opens the place where a project failed; for a project that was skipped, its project file.
  void Open(const std::string& project);

  void mnuWindowNextFailure_Click() { Step(true); }
  void mnuWindowPreviousFailure_Click() { Step(false); }

  [[nodiscard]] bool IsPossible() const;

  Signal<std::string> opened;  ///< the project whose failure it is

 private:
  void Step(bool isForward);

  const FailedProjects& failed_;
  Editor& editor_;
  std::string last_;  ///< the project whose failure was opened last; empty for none
};

}  // namespace gorbex
