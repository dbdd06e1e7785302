#pragma once

#include <chrono>
#include <cstddef>
#include <cstdint>
#include <optional>
#include <string>
#include <string_view>
#include <vector>

#include "analysis/group_dependency.h"
#include "analysis/reference_update.h"
#include "analysis/users_of_failed.h"
#include "build/compile.h"
#include "build/latest_report.h"
#include "build/project_value.h"
#include "build/question_time.h"
#include "build/registration_script.h"
#include "build/replaced_values.h"
#include "build/version_stamp.h"
#include "core/activity_log.h"
#include "core/latest_source.h"
#include "core/main_window.h"
#include "core/observed_dialogs.h"
#include "core/options.h"
#include "core/procedure.h"
#include "core/run_events.h"
#include "core/shell.h"
#include "core/work.h"
#include "freshness/freshness.h"
#include "platform/clock.h"
#include "platform/event_pump.h"
#include "platform/file_system.h"

namespace gorbex {

/// The Build command: takes the checked rows of the queue from top to bottom, prepares each
/// project, compiles it and records the result. The queue's order is the build order.
class BuildRun {
 public:
  struct Uses {
    frmBuilder& window;
    const clsOptions& options;
    ActivityLog& log;
    ObservedDialogs& dialogs;
    ErrorReport& report;
    EventPump& events;
    const Clock& clock;
    Shell& shell;
    Work& work;
    LatestSource& latest;
    ReferenceUpdate& references;
    ProjectValue& values;
    VersionStamp& version;
    RegistrationScript& script;
    Compile& compile;
    ReplacedValues& replaced;
    Freshness& freshness;
    const GroupDependency& group;
    const FileReader& files;
  };

  explicit BuildRun(const Uses& uses) : uses_(uses), questionTime_(uses.clock) {}

  void mnuFileBuild_Click();

  /// Ends the run after the project being built; asked again, or outside a run, offers to end the
  /// program that is being waited for. The test project that a run ends with is not stopped by the
  /// first: the user has it open.
  void mnuFileStop_Click();

  /// Ends the run without asking: ends the program being waited for, gives its project its values
  /// back, and starts nothing more.
  void End();

  RunEvents events;

 private:
  struct Counters {
    std::int32_t built = 0;
    std::int32_t errors = 0;
    std::int32_t upToDate = 0;
  };

  /// The values that a debug build replaces for the time of the compile.
  /// A value that could not be read is not changed, because it could not be written back.
  struct DebugValues {
    std::optional<std::int32_t> optimization;
    std::optional<std::int32_t> debugInfo;
  };
  class DebugBuild;

  enum class Pass { GoOn, Stop };

  [[nodiscard]] RunResult Run(Procedure& on, Counters& counters);
  [[nodiscard]] bool ResetIcons(Procedure& on);
  [[nodiscard]] bool AskAboutCompatibility();
  [[nodiscard]] bool MayEmptyReferences();
  [[nodiscard]] bool MayEmptyReferences(const std::string& path);
  [[nodiscard]] bool AskToEmpty(const std::vector<std::string>& references,
                                std::string_view question);
  void UpdateReferences(Procedure& on, const std::string& path);
  void RestoreMailTimer();
  void BuildQueueRows(Procedure& on, Counters& counters);

  /// Time that runs only while no question is open.
  [[nodiscard]] std::chrono::milliseconds WorkingTime() const;
  [[nodiscard]] Pass BuildProject(Procedure& on, const std::string& path, Counters& counters);

  /// Whether the setting passes over this project, because it uses one that failed in this run.
  [[nodiscard]] bool Skips(Procedure& on, const std::string& path, std::size_t number,
                           std::size_t of);
  void NoteFailed(const std::string& path);

  /// Whether the setting passes over this project, because it is up to date.
  [[nodiscard]] bool SkipsUpToDate(Procedure& on, const std::string& path,
                                   const std::string& exeName, Counters& counters);

  /// Makes the next run possible. The inbox stays unchecked, which the status bar tells.
  void RecoverFromAbort();

  /// The queue may change while a compile lets the user act, so a row is never held across steps.
  /// Error 35601 when it was removed meanwhile.
  [[nodiscard]] ListRow& RowOf(const std::string& path) const;

  void Prepare(Procedure& on, const std::string& path, DebugBuild& debug);
  void GetLatest(Procedure& on, const std::string& path);
  [[nodiscard]] DebugValues SetDebugValues(Procedure& on, const std::string& path);
  [[nodiscard]] std::optional<std::int32_t> DebugValue(const std::string& path,
                                                       std::string_view key);
  void WriteDebugValues(const std::string& path, const DebugValues& values);
  void WriteBack(Procedure& on, const std::string& path, const DebugValues& kept);
  void Record(Procedure& on, const std::string& path, const std::string& exeName, bool succeeded,
              Counters& counters);
  [[nodiscard]] bool AskToGoOn(const std::string& path);
  void Summarise(Procedure& on, const Counters& counters);
  void OfferAutoLaunch(Procedure& on, const Counters& counters);
  void TellOfLatest(Procedure& on);
  void NoteUnamended(const std::string& path);
  void TellUnamended();
  void Tell(const std::string& text);
  [[nodiscard]] bool DebugBuildIsOn() const;

  Uses uses_;
  std::vector<std::string> unamended_;  ///< by the present or the last run
  bool mayEmpty_ = false;               ///< the user has agreed that this run empties references
  LatestReport gets_;                   ///< of the present run
  QuestionTime questionTime_;
  std::optional<UsersOfFailed> usersOfFailed_;  ///< nothing until a project of the run has failed
};

}  // namespace gorbex
