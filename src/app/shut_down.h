#pragma once

#include "build/build_run.h"
#include "build/replaced_values.h"
#include "core/activity_log.h"
#include "core/build_project_file.h"
#include "core/dialogs.h"
#include "core/main_window.h"
#include "core/options.h"
#include "core/procedure.h"
#include "core/registry_tools.h"
#include "core/work.h"

namespace gorbex {

/// Ends the program in order: open work first, then the build project, the session values, the
/// settings and the window position.
class ShutDown {
 public:
  struct Uses {
    frmBuilder& window;
    RegistryTools& registry;
    clsOptions& options;
    ActivityLog& log;
    Dialogs& dialogs;
    ErrorReport& report;
    BuildProjectFile& buildProject;
    BuildRun& run;
    Work& work;
    ReplacedValues& replaced;
  };

  explicit ShutDown(const Uses& uses) : uses_(uses) {}

  /// True when the window may close now. It stays open while a build, a request or source control
  /// is at work and when changes that the user wants to keep could not be saved.
  [[nodiscard]] bool Form_QueryUnload();

  void mnuFileExit_Click();

  /// Whether the user's session may end now without losing what the user has not saved. Asks
  /// nobody: the system waits for the answer.
  [[nodiscard]] bool SessionMayEnd() const { return !uses_.window.ProjectChanged; }

  /// Ends the program with the user's session. Ends all work, writes project files' own values back
  /// and stores the settings before it returns. Asks nobody.
  void SessionEnds();

  /// Whether a build, a request or source control is at work.
  [[nodiscard]] bool IsAtWork() const {
    return uses_.work.Builds() || !uses_.work.MayUseSourceControl();
  }

  /// True when the user asked to close during work that has ended since.
  [[nodiscard]] bool Due() const { return wanted_ && !IsAtWork(); }

 private:
  void AskToStop();
  void StoreState(Procedure& on);

  Uses uses_;
  bool wanted_ = false;
};

}  // namespace gorbex
