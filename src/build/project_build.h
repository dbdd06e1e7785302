#pragma once

#include <chrono>
#include <cstddef>
#include <optional>
#include <string>

#include "build/compile.h"
#include "build/debug_build.h"
#include "build/run_parts.h"
#include "build/run_state.h"
#include "core/procedure.h"
#include "core/run_events.h"

namespace gorbex {

/// The build of one project in a run: the steps before its compile, the compile, and its result.
class ProjectBuild {
 public:
  /// `place` is the compiler's place among those that run side by side, from 1.
  ProjectBuild(const RunParts& parts, RunState& run, RunEvents& events, std::string path,
               std::size_t place);

  /// Whether the run passes over this project, because the setting wants that and it uses one that
  /// failed in this run.
  [[nodiscard]] bool IsSkipped(Procedure& on);

  /// Prepares the project and starts its compiler. False when there is nothing to wait for, because
  /// the project is up to date and the run passes over such projects.
  [[nodiscard]] bool Begin(Procedure& on);

  /// Waits for the compiler's end at most for the patience given.
  [[nodiscard]] bool HasEnded(std::chrono::milliseconds patience) const;

  /// Judges the compile and records the result; true when the project was built.
  bool Finish(Procedure& on);

  /// Whether a run that asks after each failed project goes on after this one.
  [[nodiscard]] bool AskToGoOn();

  /// The file that belongs into the registration script; empty when the project is not built.
  [[nodiscard]] const std::string& Component() const { return component_; }

 private:
  void ShowBegin(Procedure& on);
  [[nodiscard]] bool IsPassedOver(Procedure& on);
  void GetLatest(Procedure& on);
  void Prepare(Procedure& on);
  void UpdateReferences(Procedure& on);
  void Record(Procedure& on, bool succeeded);

  /// The queue may change while a compile lets the user act, so a row is never held across steps.
  /// Error 35601 when it was removed meanwhile.
  [[nodiscard]] ListRow& Row() const;

  const RunParts& parts_;
  RunState& run_;
  RunEvents& events_;
  std::string path_;
  std::size_t place_;
  std::string exeName_;
  std::string component_;
  std::chrono::milliseconds start_{0};
  DebugBuild debug_;
  std::optional<Compile::Going> compile_;
};

}  // namespace gorbex
