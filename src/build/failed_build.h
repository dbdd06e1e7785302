#pragma once

#include "analysis/queue_marks.h"
#include "build/build_run.h"
#include "core/main_window.h"

namespace gorbex {

/// Builds what failed, and what was skipped because of it, once more.
class FailedBuild {
 public:
  FailedBuild(frmBuilder& window, QueueMarks& marks, BuildRun& run)
      : window_(window), marks_(marks), run_(run) {}

  /// A run over the rows that failed. Afterwards the queue has the marks that it had before.
  void mnuQueueBuildFailed_Click();

 private:
  frmBuilder& window_;
  QueueMarks& marks_;
  BuildRun& run_;
};

}  // namespace gorbex
