#pragma once

#include <string>
#include <vector>

#include "core/run_events.h"

namespace gorbex {

/// A project that did not build.
struct FailedProject {
  std::string path;
  std::string reason;  ///< one line, never empty
  std::string log;     ///< what the compiler wrote; empty when it wrote nothing

  /// The path, underlined, above the compiler's words or the reason. Lines end with CR LF.
  [[nodiscard]] std::string Text() const;
};

/// The projects that failed last: in a run, and in the single builds since. A project is in the
/// list once, until it is built or the next run begins.
class FailedProjects {
 public:
  FailedProjects(RunEvents& runs, Signal<CompileEnded>& compiles);

  [[nodiscard]] const std::vector<FailedProject>& All() const { return all_; }

  mutable Signal<> changed;

 private:
  void Clear();
  void Take(const CompileEnded& compile);

  std::vector<FailedProject> all_;
  std::vector<Subscription> subscriptions_;
};

}  // namespace gorbex
