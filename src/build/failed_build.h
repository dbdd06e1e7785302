#pragma once

#include "build/build_run.h"
#include "core/failed_projects.h"

namespace gorbex {

/// Builds the projects again that failed, or were skipped because of a failed one.
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
