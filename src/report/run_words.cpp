#include "report/run_words.h"

#include <algorithm>
#include <cstdio>

#include "core/file_tools.h"
#include "platform/plain_text.h"

namespace gorbex {

using Outcome = RunRecord::Outcome;

ProjectResult ResultOf(const RunRecord& record, const RunRecord::Project& project) {
  if (project.outcome == Outcome::Built) return ProjectResult::Built;
  if (project.outcome == Outcome::Failed) return ProjectResult::Failed;
  if (project.outcome == Outcome::UpToDate) return ProjectResult::UpToDate;
  if (project.IsSkipped()) return ProjectResult::Skipped;
  if (record.HasEnded()) return ProjectResult::NotBuilt;
  return project.HasBegun() ? ProjectResult::Building : ProjectResult::Waiting;
}

std::string_view NameOf(ProjectResult result) {
  static constexpr std::string_view kNames[] = {"waiting",    "building", "built",    "failed",
                                                "up to date", "skipped",  "not built"};
  return kNames[static_cast<std::size_t>(result)];
}

ProjectState StateOf(ProjectResult result) {
  using State = ProjectState;
  static constexpr State kStates[] = {State::Checked, State::Building, State::Built,
                                      State::Failed,  State::UpToDate, State::Skipped,
                                      State::Checked};
  return kStates[static_cast<std::size_t>(result)];
}

std::string ReasonText(const RunRecord& record, const RunRecord::Project& project) {
  const ProjectResult result = ResultOf(record, project);
  if (result == ProjectResult::Waiting) return "";
  if (result == ProjectResult::Skipped) return project.log;
  if (result == ProjectResult::NotBuilt) {
    return project.HasBegun() ? "the run ended before its compile did"
                              : "the run ended before its turn";
  }
  return project.reason.empty() ? "checked for the build" : project.reason;
}

std::string WordsOf(const RunRecord& record, const RunRecord::Project& project) {
  const bool isLeft = project.outcome == Outcome::NotBuilt && project.log.empty();
  return isLeft ? ReasonText(record, project) : project.log;
}

std::string TimeText(std::chrono::milliseconds time) {
  const auto count = time.count();
  char buffer[40];
  if (count < 10'000) {
    std::snprintf(buffer, sizeof buffer, "%.2f s", static_cast<double>(count) / 1000);
  } else if (count < 60'000) {
    std::snprintf(buffer, sizeof buffer, "%.1f s", static_cast<double>(count) / 1000);
  } else {
    const auto seconds = static_cast<long long>(count / 1000);
    std::snprintf(buffer, sizeof buffer, "%lld:%02lld", seconds / 60, seconds % 60);
  }
  return buffer;
}

std::string BarText(const RunRecord& record, const TimelineBar& bar) {
  const RunRecord::Project& project = record.Projects()[bar.project];
  const ProjectResult result = ResultOf(record, project);
  std::string text = GetFileFromPath(project.path);
  text.append(": ").append(NameOf(result));
  if (result == ProjectResult::UpToDate) {
    text.append(" at ").append(TimeText(bar.start));
  } else {
    text.append(result == ProjectResult::Building ? " for " : " in ")
        .append(TimeText(bar.Duration()));
    text.append(", from ").append(TimeText(bar.start)).append(" on");
  }
  text.append(", place ").append(std::to_string(bar.place));
  if (const std::string reason = ReasonText(record, project); !reason.empty()) {
    text.append("\n").append(reason);
  }
  if (bar.isCritical) text.append("\non the critical path");
  return text;
}

std::string SummaryOf(const RunRecord& record, const RunTimeline& timeline) {
  const auto& projects = record.Projects();
  if (record.HasEnded()) {
    return CountsText(record.End(), projects.size()) + " in " + TimeText(timeline.length);
  }
  const auto isDone = [&](const RunRecord::Project& project) {
    const ProjectResult result = ResultOf(record, project);
    return result != ProjectResult::Waiting && result != ProjectResult::Building;
  };
  const auto done = std::ranges::count_if(projects, isDone);
  return std::to_string(done) + " of " + std::to_string(projects.size()) + " done in " +
         TimeText(timeline.length);
}

}  // namespace gorbex
