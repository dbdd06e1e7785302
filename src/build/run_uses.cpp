#include "build/run_uses.h"

#include <numeric>
#include <optional>
#include <unordered_map>
#include <utility>

#include "analysis/dependency_graph.h"

namespace gorbex {
namespace {

class Collector {
 public:
  Collector(const MemberCollection& members, const GroupDependency& group,
            const std::vector<std::string>& paths)
      : graph_(members, group), inRun_(graph_.Count()), seenFor_(graph_.Count(), paths.size()) {
    std::unordered_map<std::string, std::size_t> numbers;
    for (std::size_t i = 0; i < paths.size(); ++i) numbers.emplace(paths[i], i);
    members_.resize(paths.size());
    std::size_t member = 0;
    for (const auto& each : members) {
      const auto number = numbers.find(each->path);
      if (number != numbers.end()) {
        inRun_[member] = number->second;
        members_[number->second] = member;
      }
      ++member;
    }
  }

  /// Empty for a row whose project is not loaded.
  [[nodiscard]] std::vector<std::size_t> Of(std::size_t project) {
    std::vector<std::size_t> uses;
    std::vector<std::size_t> through;
    if (const auto& member = members_[project]) through.push_back(*member);
    for (std::size_t i = 0; i < through.size(); ++i) {
      for (const std::size_t used : graph_.UsesOf(through[i])) {
        if (std::exchange(seenFor_[used], project) == project) continue;
        if (const auto& inRun = inRun_[used]) {
          uses.push_back(*inRun);
        } else {
          through.push_back(used);
        }
      }
    }
    return uses;
  }

 private:
  DependencyGraph graph_;
  std::vector<std::optional<std::size_t>> inRun_;    ///< the project of the run, by member
  std::vector<std::optional<std::size_t>> members_;  ///< the member, by project of the run
  std::vector<std::size_t> seenFor_;                 ///< the last project that uses a member
};

}  // namespace

std::vector<std::vector<std::size_t>> UsesInRun(const MemberCollection& members,
                                                const GroupDependency& group,
                                                const std::vector<std::string>& paths) {
  Collector collector(members, group, paths);
  std::vector<std::vector<std::size_t>> uses;
  uses.reserve(paths.size());
  for (std::size_t i = 0; i < paths.size(); ++i) uses.push_back(collector.Of(i));
  return uses;
}

std::vector<std::vector<std::size_t>> WithoutCircles(std::vector<std::vector<std::size_t>> uses) {
  std::vector<std::size_t> last(uses.size());  // of its circle; itself outside
  std::iota(last.begin(), last.end(), 0);
  const auto cycles = DependencyGraph(uses).Cycles();
  for (const auto& cycle : cycles) {
    for (const std::size_t project : cycle) last[project] = cycle.back();
  }
  for (std::size_t i = 0; i < uses.size(); ++i) {
    std::erase_if(uses[i], [&](std::size_t used) { return last[used] == last[i]; });
    for (std::size_t& used : uses[i]) used = last[used];
  }
  for (const auto& cycle : cycles) {
    for (std::size_t i = 1; i < cycle.size(); ++i) uses[cycle[i]].push_back(cycle[i - 1]);
  }
  return uses;
}

}  // namespace gorbex
