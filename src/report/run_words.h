#pragma once

#include <chrono>
#include <string>
#include <string_view>

#include "analysis/project_state.h"
#include "build/run_timeline.h"
#include "core/run_record.h"

namespace gorbex {

/// How far a project of a run has come.
enum class ProjectResult { Waiting, Building, Built, Failed, UpToDate, Skipped, NotBuilt };

[[nodiscard]] ProjectResult ResultOf(const RunRecord& record, const RunRecord::Project& project);

/// The name for the user, such as "up to date".
[[nodiscard]] std::string_view NameOf(ProjectResult result);

/// How a result is drawn, as in pictures of the group. A project that waits or was not reached is
/// drawn as checked.
[[nodiscard]] ProjectState StateOf(ProjectResult result);

/// Why a project was built, passed over or not reached; empty while it waits.
[[nodiscard]] std::string ReasonText(const RunRecord& record, const RunRecord::Project& project);

/// The compiler's words about a project, or why there are none; empty before it is done.
[[nodiscard]] std::string WordsOf(const RunRecord& record, const RunRecord::Project& project);

/// "0.42 s", "12.3 s" or "3:05", for a column of times.
[[nodiscard]] std::string TimeText(std::chrono::milliseconds time);

/// All that is known of a bar, such as "StoreMoney.vbp: built in 0.42 s, from 1.20 s on, place 1",
/// with the reason and the critical path on further lines.
[[nodiscard]] std::string BarText(const RunRecord& record, const TimelineBar& bar);

/// The run in a few words, such as "9 built, 1 failed in 12.3 s"; while it goes on, how many are
/// done.
[[nodiscard]] std::string SummaryOf(const RunRecord& record, const RunTimeline& timeline);

}  // namespace gorbex
