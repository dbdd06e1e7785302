#include "report/run_words.h"

#include <algorithm>
#include <cstdio>

#include "core/file_tools.h"
#include "platform/plain_text.h"

namespace gorbex {

using Outcome = RunRecord::Outcome;

ProjectResult ResultOf(const RunRecord& record, const RunRecord::Project& project) {
  switch (project.outcome) {
    case Outcome::Built:
      return ProjectResult::Built;
    case Outcome::Failed:
      return ProjectResult::Failed;
    case Outcome::UpToDate:
      return ProjectResult::UpToDate;
    case Outcome::NotBuilt:
      break;
  }
  if (project.IsSkipped()) return ProjectResult::Skipped;
  if (record.HasEnded()) return ProjectResult::NotBuilt;
  return project.HasBegun() ? ProjectResult::Building : ProjectResult::Waiting;
}

std::string_view NameOf(ProjectResult result) {
  switch (result) {
    case ProjectResult::Waiting:
      return "waiting";
    case ProjectResult::Building:
      return "building";
    case ProjectResult::Built:
      return "built";
    case ProjectResult::Failed:
      return "failed";
    case ProjectResult::UpToDate:
      return "up to date";
    case ProjectResult::Skipped:
      return "skipped";
    case ProjectResult::NotBuilt:
      return "not built";
  }
  return {};
}

ProjectState StateOf(ProjectResult result) {
  switch (result) {
    case ProjectResult::Waiting:
    case ProjectResult::NotBuilt:
      return ProjectState::Checked;
    case ProjectResult::Building:
      return ProjectState::Building;
    case ProjectResult::Built:
      return ProjectState::Built;
    case ProjectResult::Failed:
      return ProjectState::Failed;
    case ProjectResult::UpToDate:
      return ProjectState::UpToDate;
    case ProjectResult::Skipped:
      return ProjectState::Skipped;
  }
  return ProjectState::None;
}

std::string ReasonText(const RunRecord& record, const RunRecord::Project& project) {
  switch (ResultOf(record, project)) {
    case ProjectResult::Waiting:
      return "";
    case ProjectResult::Skipped:
      return project.log;
    case ProjectResult::NotBuilt:
      return project.HasBegun() ? "the run ended before its compile did"
                                : "the run ended before its turn";
    case ProjectResult::Building:
    case ProjectResult::Built:
    case ProjectResult::Failed:
    case ProjectResult::UpToDate:
      break;
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
  const auto done = std::count_if(projects.begin(), projects.end(), isDone);
  return std::to_string(done) + " of " + std::to_string(projects.size()) + " done in " +
         TimeText(timeline.length);
}

std::string_view CompilerWords(const RunRecord::Project& project) {
  const std::string_view words = Trimmed(project.log);
  return words.empty() ? std::string_view("the compiler wrote an empty result log") : words;
}

}  // namespace gorbex
