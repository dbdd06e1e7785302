#include "freshness/build_plan.h"

#include <unordered_map>
#include <unordered_set>
#include <utility>

#include "analysis/dependency_graph.h"
#include "core/list_columns.h"

namespace gorbex {
namespace {

/// Who uses whom, asked by path.
class Uses {
 public:
  Uses(const MemberCollection& members, const GroupDependency& group) : graph_(members, group) {
    for (const auto& member : members) {
      numbers_.emplace(member->path, paths_.size());
      paths_.push_back(member->path);
    }
  }

  [[nodiscard]] std::vector<std::string> Of(const std::string& path,
                                            const std::unordered_set<std::string>& among) const {
    std::vector<std::string> used;
    const auto number = numbers_.find(path);
    if (number == numbers_.end()) return used;
    for (const std::size_t project : graph_.UsesOf(number->second)) {
      if (among.contains(paths_[project])) used.push_back(paths_[project]);
    }
    return used;
  }

 private:
  DependencyGraph graph_;
  std::vector<std::string> paths_;
  std::unordered_map<std::string, std::size_t> numbers_;
};

}  // namespace

BuildPlan PlanOf(const frmBuilder& window, const GroupDependency& group, Freshness& freshness) {
  freshness.LookAgain();
  BuildPlan plan;
  std::unordered_set<std::string> built;
  std::optional<Uses> uses;
  for (const auto& row : window.lvwQueue.Rows()) {
    if (!row->Checked()) continue;
    PlannedProject project{row->SubItem(queue_column::kProject), {}, {}};
    project.judgement = freshness.Judge(project.path);
    if (project.judgement.IsUpToDate()) {
      ++plan.upToDate;
      if (!built.empty() && !uses) uses.emplace(window.ProjectMembers, group);
      if (uses) project.unless = uses->Of(project.path, built);
    } else {
      ++plan.toBuild;
      built.insert(project.path);
      if (const auto last = project.judgement.lastDuration) {
        plan.estimate = plan.estimate.value_or(std::chrono::milliseconds(0)) + *last;
      }
    }
    plan.projects.push_back(std::move(project));
  }
  return plan;
}

}  // namespace gorbex
