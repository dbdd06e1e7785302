#pragma once

#include "build/project_build.h"
#include "build/run_parts.h"
#include "build/run_state.h"
#include "core/failed_projects.h"
#include "core/procedure.h"
#include "core/run_events.h"

namespace gorbex {

/// The Build command: takes the checked rows of the queue from top to bottom, prepares each
/// project, compiles it and records the result. The queue's order is the build order.
class BuildRun {
 public:
  explicit BuildRun(const RunParts& parts) : parts_(parts) {}

  void mnuFileBuild_Click();

  /// As the Build command, but over the rows of these projects, checked or not. The other rows stay
  /// as they are.
  void BuildAgain(const std::vector<FailedProject>& failed);

  /// Ends the run after the project being built. Asked again, or outside a run, offers to end the
  /// program that is being waited for. During the test project at the end of a run, the first call
  /// only tells that the project is running.
  void mnuFileStop_Click();

  /// Ends the run without asking: ends the program being waited for, gives its project its values
  /// back, and starts nothing more.
  void End();

  RunEvents events;

 private:
  enum class Pass { GoOn, Stop };

  void Start(RowsToRepeat rows);
  [[nodiscard]] RunResult Run(Procedure& on, RunState& run);
  [[nodiscard]] bool ResetIcons(Procedure& on, const RunState& run);

  /// Whether a row of the run that is not compatible may be built: a run that skips what is up to
  /// date does not ask about those that it skips.
  [[nodiscard]] bool MayBuildIncompatible(const RunState& run);
  [[nodiscard]] bool AskAboutCompatibility();
  void RestoreMailTimer();
  [[nodiscard]] RunResult BuildQueueRows(Procedure& on, RunState& run);

  /// One after the other, in the order that the queue has when a project's turn comes.
  void BuildInTurn(Procedure& on, RunState& run);

  /// The durations of the last builds of the run's projects, in the order of the queue.
  [[nodiscard]] TimeLeft::Durations LastDurations(const RunState& run) const;
  [[nodiscard]] Pass BuildProject(Procedure& on, ProjectBuild& build);

  /// Makes the next run possible. No requests by mail are served until the service is switched off
  /// and on, and the status bar says so.
  void RecoverFromAbort();

  /// The result so far.
  [[nodiscard]] RunEnded EndOf(const RunState& run, RunResult result) const;

  void Summarise(Procedure& on, const RunState& run);
  void OfferAutoLaunch(Procedure& on, const RunState& run);
  void TellUnamended(const RunState& run);

  RunParts parts_;
};

}  // namespace gorbex
