#include "freshness/build_plan.h"

#include <algorithm>
#include <unordered_map>
#include <unordered_set>
#include <utility>

#include "analysis/dependency_graph.h"
#include "core/file_tools.h"
#include "core/list_columns.h"
#include "platform/code_page.h"

namespace gorbex {
namespace {

/// The projects of a plan that are, or may be, built before the one in question.
class Builds {
 public:
  Builds(const frmBuilder& window, const GroupDependency& group) : window_(window), group_(group) {}

  void Add(const std::string& path) {
    paths_.insert(path);
    const clsMember* project = window_.ProjectMembers.Find(path);
    if (project != nullptr) {
      byOutput_[LowerCase(BuiltFile(*project, window_.buildDirectory))] = path;
    }
  }

  /// Those that a project uses.
  [[nodiscard]] std::vector<std::string> UsedBy(const std::string& path) {
    std::vector<std::string> used;
    if (paths_.empty()) return used;
    const DependencyGraph& graph = Graph();
    const auto number = numbers_.find(path);
    if (number == numbers_.end()) return used;
    for (const std::size_t project : graph.UsesOf(number->second)) {
      if (paths_.contains(all_[project])) used.push_back(all_[project]);
    }
    return used;
  }

  /// Those that may take the reasons away; none when another reason remains.
  [[nodiscard]] std::vector<std::string> Undoing(const std::vector<Reason>& reasons) const {
    std::vector<std::string> found;
    for (const Reason& reason : reasons) {
      const auto build = byOutput_.find(LowerCase(reason.component));
      if (build == byOutput_.end()) return {};
      const std::string& path = build->second;
      if (std::ranges::find(found, path) == found.end()) found.push_back(path);
    }
    return found;
  }

 private:
  const DependencyGraph& Graph() {
    if (graph_) return *graph_;
    const DependencyGraph& graph = graph_.emplace(window_.ProjectMembers, group_);
    for (const auto& member : window_.ProjectMembers) {
      numbers_.emplace(member->path, all_.size());
      all_.push_back(member->path);
    }
    return graph;
  }

  const frmBuilder& window_;
  const GroupDependency& group_;
  std::unordered_set<std::string> paths_;
  std::unordered_map<std::string, std::string> byOutput_;  ///< paths by output in small letters
  std::optional<DependencyGraph> graph_;                   ///< nothing until it is needed
  std::vector<std::string> all_;                           ///< in the graph's order
  std::unordered_map<std::string, std::size_t> numbers_;
};

void Count(BuildPlan& plan, const PlannedProject& project) {
  if (project.judgement.IsUpToDate()) {
    ++plan.upToDate;
    if (project.MayBeBuilt()) ++plan.mayBeBuilt;
    return;
  }
  ++plan.toBuild;
  if (project.MayBeSkipped()) ++plan.mayBeSkipped;
  if (const auto last = project.judgement.lastDuration) {
    plan.estimate = plan.estimate.value_or(std::chrono::milliseconds(0)) + *last;
  }
}

std::string CountedWithDoubt(std::size_t count, std::string_view what, std::size_t doubtful,
                             std::string_view doubt) {
  std::string text = std::to_string(count).append(what);
  if (doubtful > 0) text.append(" (").append(std::to_string(doubtful)).append(doubt).append(")");
  return text;
}

}  // namespace

BuildPlan PlanOf(const frmBuilder& window, const GroupDependency& group, Freshness& freshness,
                 PlannedRows rows) {
  freshness.LookAgain();
  BuildPlan plan;
  Builds builds(window, group);
  for (const auto& row : window.lvwQueue.Rows()) {
    if (rows == PlannedRows::Checked && !row->Checked()) continue;
    PlannedProject project{row->SubItem(queue_column::kProject), {}};
    project.judgement = freshness.Judge(project.path);
    const auto& reasons = project.judgement.reasons;
    project.decidedBy = reasons.empty() ? builds.UsedBy(project.path) : builds.Undoing(reasons);
    if (project.MayBeBuilt()) builds.Add(project.path);
    Count(plan, project);
    plan.projects.push_back(std::move(project));
  }
  return plan;
}

std::string UnlessText(const PlannedProject& project) {
  std::string names;
  for (const std::string& path : project.decidedBy) {
    names.append(names.empty() ? "" : ", ").append(GetFileFromPath(path));
  }
  if (names.empty()) return {};
  const bool isUpToDate = project.judgement.IsUpToDate();
  return (isUpToDate ? ", unless another interface comes of "
                     : ", unless the same interface comes of ") +
         names;
}

std::string CountsText(const BuildPlan& plan) {
  return CountedWithDoubt(plan.toBuild, " to build", plan.mayBeSkipped, " may be skipped") + ", " +
         CountedWithDoubt(plan.upToDate, " up to date", plan.mayBeBuilt, " may be built");
}

}  // namespace gorbex
