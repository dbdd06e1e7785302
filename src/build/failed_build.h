#pragma once

#include "build/build_run.h"
#include "core/failed_projects.h"

namespace gorbex {

/// Builds what failed, and what was skipped because of it, once more.
class FailedBuild {
 public:
  FailedBuild(const FailedProjects& failed, BuildRun& run) : failed_(failed), run_(run) {}

  /// A run over the rows that failed. Marks, icons and times of the other rows stay.
  void mnuQueueBuildFailed_Click();

 private:
  const FailedProjects& failed_;
  BuildRun& run_;
};

}  // namespace gorbex
