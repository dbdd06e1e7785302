#pragma once

#include "analysis/build_queue.h"
#include "analysis/project_display.h"
#include "core/main_window.h"
#include "core/run_events.h"
#include "core/work.h"
#include "platform/file_system.h"

namespace gorbex {

/// Updates the display of compiled projects: a build writes compatibility and version into their
/// files, and registers their components.
class CompiledProjects {
 public:
  struct Uses {
    frmBuilder& window;
    const FileReader& files;
    BuildQueue& queue;
    ProjectDisplay& display;
    Work& work;
  };

  /// The signal and all that is used must outlive this object.
  CompiledProjects(const Uses& uses, Signal<CompileEnded>& compiles);

 private:
  void ReadAgain(const std::string& path);

  /// Once for everything that was compiled, as soon as nothing builds any more: the verdicts of all
  /// references are asked for again.
  void MarkWhenDone();

  Uses uses_;
  bool isStale_ = false;  ///< something was compiled since the references were marked
  Subscriptions subscriptions_;
};

}  // namespace gorbex
