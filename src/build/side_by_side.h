#pragma once

#include <chrono>
#include <cstddef>
#include <memory>
#include <string>
#include <vector>

#include "build/project_build.h"
#include "build/run_parts.h"
#include "build/run_schedule.h"
#include "build/run_state.h"
#include "core/procedure.h"
#include "core/run_events.h"

namespace gorbex {

/// The schedule of a run that builds these projects side by side.
[[nodiscard]] RunSchedule ScheduleOf(const frmBuilder& window, const GroupDependency& group,
                                     const FileReader& files, Freshness& freshness,
                                     const std::vector<std::string>& paths);

/// Builds the checked rows of the queue with several compilers at once. Only the compilers overlap:
/// every other step of every project runs in the program's one thread.
class SideBySide {
 public:
  SideBySide(const RunParts& parts, RunState& run, RunEvents& events, std::size_t places);

  /// Waits for the compilers that still run when an error has ended the run early, and records
  /// their results.
  ~SideBySide();
  SideBySide(const SideBySide&) = delete;
  SideBySide& operator=(const SideBySide&) = delete;

  /// Builds the projects that are checked now. One that is unchecked before its turn comes is left
  /// out. The script names the components in the order of the queue.
  void Run(Procedure& on);

 private:
  struct Building {
    std::size_t project = 0;  ///< its number in paths_
    std::size_t place = 0;
    std::chrono::milliseconds start{0};  ///< of the run's working time
    std::unique_ptr<ProjectBuild> build{};
    std::string log{};  ///< its lines so far
  };

  void StartReady(Procedure& on);
  void Start(Procedure& on, std::size_t project);
  [[nodiscard]] bool Begins(Procedure& on, Building& next);
  [[nodiscard]] Building AwaitOne();
  void Finish(Procedure& on, Building building);
  void Settle(const Building& building);
  [[nodiscard]] bool GoesOnAfterFailures(Procedure& on);
  void WriteScript(Procedure& on);
  void TellPace();
  [[nodiscard]] std::size_t FreePlace() const;

  const RunParts& parts_;
  RunState& run_;
  RunEvents& events_;
  std::size_t places_;
  std::vector<std::string> paths_;       ///< of the projects of the run, in the queue's order
  std::vector<std::string> components_;  ///< built, by project; empty where nothing was
  RunSchedule schedule_;
  std::vector<Building> building_;
  std::vector<std::unique_ptr<ProjectBuild>> failed_;  ///< that the user is to be asked about
};

}  // namespace gorbex
