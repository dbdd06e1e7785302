#pragma once

#include <chrono>
#include <cstddef>
#include <optional>
#include <string>
#include <vector>

#include "analysis/group_dependency.h"
#include "build/run_timeline.h"
#include "core/main_window.h"
#include "core/options.h"
#include "core/run_record.h"
#include "platform/clock.h"

namespace gorbex {

/// The build project, the start time and the settings of a run.
struct RunTerms {
  std::string file;  ///< the build project; empty for one that was never saved
  CivilTime begun;
  std::string terms;       ///< the settings in force, on one line
  std::string compiler;    ///< empty for none
  std::string version;     ///< that the run stamps; empty for none
  std::size_t places = 1;  ///< the number of compilers that may run side by side
};

/// The terms of a run that begins now.
[[nodiscard]] RunTerms TermsOfRun(frmBuilder& window, const clsOptions& options,
                                  const Clock& clock);

/// The last run of the open build project, or the one that goes on.
class LastRun {
 public:
  struct Uses {
    frmBuilder& window;
    const clsOptions& options;
    const GroupDependency& group;
    const Clock& clock;
  };

  /// All must outlive it.
  explicit LastRun(const Uses& uses) : uses_(uses) {}

  /// Follows these runs; only a front end that shows the last run needs this.
  void Listen(RunEvents& events);

  /// False before the first run.
  [[nodiscard]] bool HasBegun() const { return hasBegun_; }
  [[nodiscard]] bool IsGoing() const { return HasBegun() && !record_.HasEnded(); }

  [[nodiscard]] const RunRecord& Record() const { return record_; }
  [[nodiscard]] const RunTerms& Terms() const { return terms_; }  ///< once it has begun
  [[nodiscard]] RunTimeline Timeline();

  using Numbers = std::vector<std::vector<std::size_t>>;

  /// For each project of the run the numbers of those that it uses, found out at the first call.
  const Numbers& UsesOfRun();

  mutable Signal<> began;    ///< another run, or none, is the last one from now on
  mutable Signal<> changed;  ///< for each announcement of a run

 private:
  void On(const RunEvent& event);
  void Begin(const RunStarted& started);
  void Forget();

  Uses uses_;
  RunRecord record_{{}};
  RunTerms terms_;
  bool hasBegun_ = false;
  bool isHeard_ = false;  ///< until its last announcement
  std::chrono::milliseconds begin_{0};
  std::optional<Numbers> usesInRun_;
  std::vector<Subscription> subscriptions_;
};

/// The paths of a record's projects, in its order.
[[nodiscard]] std::vector<std::string> PathsOf(const RunRecord& record);

}  // namespace gorbex
