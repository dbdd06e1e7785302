#include "freshness/outdated_marks.h"

#include <cstddef>
#include <unordered_set>

#include "core/file_tools.h"
#include "core/list_columns.h"
#include "core/text.h"
#include "freshness/build_plan.h"

namespace gorbex {
namespace {

// The first few names, and how many more there are.
std::string Names(std::vector<std::string> names) {
  constexpr std::size_t kShown = 3;
  if (names.size() <= kShown) return Joined(names);
  const std::string more = " and " + std::to_string(names.size() - kShown) + " more";
  names.resize(kShown);
  return Joined(names) + more;
}

std::string StatusText(const BuildPlan& plan) {
  std::vector<std::string> doubtful;
  for (const PlannedProject& project : plan.projects) {
    const bool isDoubtful = project.judgement.IsUpToDate() && project.MayBeBuilt();
    if (isDoubtful) doubtful.push_back(GetFileFromPath(project.path));
  }
  std::string text = Counted(plan.toBuild, "row", "rows") + " marked";
  if (plan.mayBeSkipped > 0) text += " (" + std::to_string(plan.mayBeSkipped) + " may be skipped)";
  text += ", " + std::to_string(plan.upToDate) + " up to date";
  return doubtful.empty() ? text : text + "; may need a build after them: " + Names(doubtful);
}

}  // namespace

void OutdatedMarks::mnuQueueMarkOutdated_Click() {
  const BuildPlan plan = PlanOf(window_, group_, freshness_, PlannedRows::All);
  std::unordered_set<std::string> outdated;
  for (const PlannedProject& project : plan.projects) {
    if (!project.judgement.IsUpToDate()) outdated.insert(project.path);
  }
  for (const auto& row : window_.lvwQueue.Rows()) {
    row->SetChecked(outdated.contains(row->SubItem(queue_column::kProject)));
  }
  window_.SetStatus(StatusText(plan));
}

std::vector<std::pair<std::string, bool>> OutdatedMarks::Judged() {
  std::vector<std::pair<std::string, bool>> judged;
  for (const PlannedProject& project :
       PlanOf(window_, group_, freshness_, PlannedRows::All).projects) {
    judged.emplace_back(project.path, !project.judgement.IsUpToDate());
  }
  return judged;
}

std::string OutdatedMarks::NoteOf(const ListRow& row) {
  if (work_.Goes(Task::Run)) return row.Note();
  freshness_.LookAgain();
  return gorbex::NoteOf(freshness_.Judge(row.SubItem(queue_column::kProject)));
}

}  // namespace gorbex
