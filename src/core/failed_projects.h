#pragma once

#include <optional>
#include <string>
#include <vector>

#include "core/run_events.h"

namespace gorbex {

/// A project that did not build.
struct FailedProject {
  std::string path;
  std::string reason;                     ///< one line, never empty
  std::string log;                        ///< what the compiler wrote; empty when it wrote nothing
  std::optional<FailurePlace> failure{};  ///< nothing when a run skipped it

  /// The path, underlined, right above the compiler's words or the reason. Lines end with CR LF.
  [[nodiscard]] std::string Text() const;
};

/// The projects that failed last: in a run, and in the single builds since; also those that the run
/// skipped because they use one that failed. Each project is listed once. It leaves the list when
/// it is built or found up to date, when a run begins that does not repeat a part of the last one,
/// or when its build project is closed.
class FailedProjects {
 public:
  /// `closed` tells that the build project is closed.
  FailedProjects(RunEvents& runs, Signal<CompileEnded>& compiles, Signal<>& closed);

  [[nodiscard]] const std::vector<FailedProject>& All() const { return all_; }

  /// Null when the project did not fail.
  [[nodiscard]] const FailedProject* Find(const std::string& path) const;

  mutable Signal<> changed;

 private:
  void Clear();
  void Forget(const std::string& path);
  void Take(const CompileEnded& compile);
  void Take(const ProjectSkipped& skipped);

  std::vector<FailedProject> all_;
  Subscriptions subscriptions_;
};

}  // namespace gorbex
