#pragma once

#include <chrono>
#include <cstddef>
#include <optional>
#include <string>
#include <string_view>
#include <variant>
#include <vector>

#include "core/dialogs.h"
#include "core/failure_place.h"
#include "core/latest_source.h"
#include "core/signal.h"
#include "core/time_estimate.h"

namespace gorbex {

/// The result of one compile, in a run or by itself.
struct CompileEnded {
  std::string path;
  bool succeeded = false;
  std::string log;                        ///< what the compiler wrote, empty when it wrote nothing
  std::string problem;                    ///< why it wrote nothing, when the program knows
  std::optional<FailurePlace> failure{};  ///< nothing when it succeeded
};

enum class RunResult {
  Refused,         ///< ended by "No" at the compatibility question
  KeptReferences,  ///< ended by "No" at the question on references that would come out empty
  NoCompiler,      ///< there was nothing to compile with
  Aborted,         ///< ended by Abort at an error report
  Stopped,         ///< told to end before its last project was done
  Finished,
};

enum class BuildStep { Latest, Compatibility, Debug, References, Version, Compile };

/// The name for the user, such as "compiling".
[[nodiscard]] std::string_view NameOf(BuildStep step);

/// The announcements of a build run, in the order they happen. Listeners cannot change the run.
struct RunStarted {
  std::vector<std::string> paths{};  ///< of the projects that it takes, in the queue's order
  bool isRepeat = false;  ///< of a part of the last run; its results of the other rows still hold
};
struct ProjectStarted {
  std::string path;
  std::size_t number = 0;  ///< from 1
  std::size_t of = 0;
  std::size_t place = 1;               ///< among the compilers that run side by side, from 1
  std::chrono::milliseconds start{0};  ///< since the run began

  /// How long the whole run still takes, when projects are built one after the other; nothing when
  /// no durations are known.
  std::optional<TimeEstimate> left{};
};
/// Instead of ProjectStarted, for a project that is skipped because it uses a failed one.
struct ProjectSkipped {
  std::string path;
  std::size_t number;  ///< from 1
  std::size_t of;
  std::string failed;  ///< the project that it uses
};
/// After ProjectStarted, instead of the steps that follow a get: the project is up to date.
struct ProjectUpToDate {
  std::string path;
  std::string since;  ///< "dd/mm/yyyy hh:nn:ss"
};
/// After ProjectStarted, in a run that skips what is up to date: why this project is not.
struct ProjectOutdated {
  std::string path;
  std::string reasons;  ///< on one line
};
struct StepStarted {
  std::string path;
  BuildStep step;
};
struct LatestGot {
  std::string path;
  LatestResult result;
};
struct ProjectCompiled {
  std::string path;
  bool succeeded;
  std::chrono::milliseconds duration;  ///< of all its steps, without the time questions were open
  std::string log;                     ///< what the compiler wrote, empty when it wrote nothing
  std::string problem;                 ///< why it wrote nothing, when the program knows
  std::optional<FailurePlace> failure{};  ///< nothing when it succeeded
};
/// Whenever one of several projects that are built side by side has begun or is done.
struct RunPaced {
  std::size_t done = 0;
  std::size_t building = 0;
  std::size_t of = 0;
  std::optional<TimeEstimate> left{};  ///< nothing when no durations are known
};
struct QuestionAsked {
  Message message;
};
struct QuestionAnswered {
  Message message;
  Answer answer = Answer::Ok;
};
struct RunEnded {
  RunResult result;
  int built;
  int errors;
  std::chrono::milliseconds duration;    ///< until it was done
  std::vector<std::string> unamended{};  ///< project files that could not be changed as asked
  int upToDate = 0;
};
/// The run is done with every project, and its result is certain. Messages to the user and the test
/// project come between this and RunEnded.
struct RunDone {
  RunEnded end;
};

using RunEvent = std::variant<RunStarted, ProjectStarted, ProjectSkipped, ProjectUpToDate,
                              ProjectOutdated, StepStarted, LatestGot, ProjectCompiled, RunPaced,
                              QuestionAsked, QuestionAnswered, RunDone, RunEnded>;
using RunEvents = Signal<RunEvent>;

/// Why a project was skipped, such as "it uses C:\Group\Core\Core.vbp, which failed".
[[nodiscard]] std::string ReasonOf(const ProjectSkipped& skipped);

/// The text of an estimate that was made `ago` before now, such as "about 40 s left"; empty when
/// there is none.
[[nodiscard]] std::string LeftText(const std::optional<TimeEstimate>& estimate,
                                   std::chrono::milliseconds ago);

/// Says why a run ended early, such as "there is no compiler", or could not change project files.
/// It is empty for other runs.
[[nodiscard]] std::string_view ProblemOf(const RunEnded& end);

/// How far a run is that announced its pace `ago` before now, such as "4 of 10 done, 3 building,
/// about 40 s left".
[[nodiscard]] std::string PaceText(const RunPaced& paced, std::chrono::milliseconds ago);

/// The result of a run, such as "9 built, 1 failed", or "3 built, 7 up to date", or "stopped: 4
/// built, 6 not built" of ten checked projects.
[[nodiscard]] std::string CountsText(const RunEnded& run, std::size_t checked);

}  // namespace gorbex
