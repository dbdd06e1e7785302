#include "report/run_words.h"

#include <algorithm>
#include <cstdio>

#include "core/file_tools.h"
#include "platform/plain_text.h"

namespace gorbex {

using Outcome = RunRecord::Outcome;

ProjectState StateOf(const RunRecord& record, const RunRecord::Project& project) {
  switch (project.outcome) {
    case Outcome::Built:
      return ProjectState::Built;
    case Outcome::Failed:
      return ProjectState::Failed;
    case Outcome::UpToDate:
      return ProjectState::UpToDate;
    case Outcome::NotBuilt:
      break;
  }
  if (project.IsSkipped()) return ProjectState::Skipped;
  if (record.HasEnded()) return ProjectState::NotBuilt;
  return project.HasBegun() ? ProjectState::Building : ProjectState::Waiting;
}

std::string_view NameOf(ProjectState state) {
  switch (state) {
    case ProjectState::Waiting:
      return "waiting";
    case ProjectState::Building:
      return "building";
    case ProjectState::Built:
      return "built";
    case ProjectState::Failed:
      return "failed";
    case ProjectState::UpToDate:
      return "up to date";
    case ProjectState::Skipped:
      return "skipped";
    case ProjectState::NotBuilt:
      return "not built";
  }
  return {};
}

std::string ReasonText(const RunRecord& record, const RunRecord::Project& project) {
  switch (StateOf(record, project)) {
    case ProjectState::Waiting:
      return "";
    case ProjectState::Skipped:
      return project.log;
    case ProjectState::NotBuilt:
      return project.HasBegun() ? "the run ended before its compile did"
                                : "the run ended before its turn";
    case ProjectState::Building:
    case ProjectState::Built:
    case ProjectState::Failed:
    case ProjectState::UpToDate:
      break;
  }
  return project.reason.empty() ? "checked for the build" : project.reason;
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
  const ProjectState state = StateOf(record, project);
  std::string text = GetFileFromPath(project.path);
  text.append(": ").append(NameOf(state));
  if (state == ProjectState::UpToDate) {
    text.append(" at ").append(TimeText(bar.start));
  } else {
    text.append(state == ProjectState::Building ? " for " : " in ")
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
    const ProjectState state = StateOf(record, project);
    return state != ProjectState::Waiting && state != ProjectState::Building;
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
