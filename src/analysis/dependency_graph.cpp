#include "analysis/dependency_graph.h"

#include <algorithm>
#include <optional>
#include <unordered_map>

#include "core/file_tools.h"
#include "core/procedure.h"
#include "core/reference_value.h"
#include "platform/code_page.h"
#include "platform/windows_path.h"

namespace gorbex {
namespace {

using Numbers = std::unordered_map<std::string, std::size_t>;

// Tarjan's algorithm with an explicit stack: a chain of thousands of projects must not exhaust the
// program's.
class ComponentSearch {
 public:
  explicit ComponentSearch(const std::vector<std::vector<std::size_t>>& uses)
      : uses_(uses), number_(uses.size(), 0), low_(uses.size(), 0), open_(uses.size(), false) {}

  std::vector<std::vector<std::size_t>> Run() {
    for (std::size_t i = 0; i < uses_.size(); ++i) {
      if (number_[i] == 0) Visit(i);
    }
    return std::move(components_);
  }

 private:
  struct Frame {
    std::size_t project;
    std::size_t nextUse;
  };

  void Enter(std::size_t project) {
    number_[project] = low_[project] = ++visited_;
    open_[project] = true;
    stack_.push_back(project);
    frames_.push_back({project, 0});
  }

  void Visit(std::size_t start) {
    Enter(start);
    while (!frames_.empty()) {
      Frame& frame = frames_.back();
      const std::size_t project = frame.project;
      if (frame.nextUse == uses_[project].size()) {
        Leave(project);
        continue;
      }
      const std::size_t used = uses_[project][frame.nextUse++];
      if (number_[used] == 0) {
        Enter(used);
      } else if (open_[used]) {
        low_[project] = std::min(low_[project], number_[used]);
      }
    }
  }

  void Leave(std::size_t project) {
    frames_.pop_back();
    if (!frames_.empty()) {
      auto& above = low_[frames_.back().project];
      above = std::min(above, low_[project]);
    }
    if (low_[project] != number_[project]) return;
    std::vector<std::size_t> component;
    std::size_t member = 0;
    do {
      member = stack_.back();
      stack_.pop_back();
      open_[member] = false;
      component.push_back(member);
    } while (member != project);
    std::sort(component.begin(), component.end());
    components_.push_back(std::move(component));
  }

  const std::vector<std::vector<std::size_t>>& uses_;
  std::vector<std::size_t> number_;
  std::vector<std::size_t> low_;
  std::vector<bool> open_;
  std::vector<std::size_t> stack_;
  std::vector<Frame> frames_;
  std::size_t visited_ = 0;
  std::vector<std::vector<std::size_t>> components_;
};

std::vector<std::size_t> Reached(std::size_t start,
                                 const std::vector<std::vector<std::size_t>>& next) {
  std::vector<bool> isReached(next.size(), false);
  std::vector<std::size_t> reached = {start};
  isReached[start] = true;
  for (std::size_t i = 0; i < reached.size(); ++i) {
    for (const std::size_t project : next[reached[i]]) {
      if (!isReached[project]) reached.push_back(project);
      isReached[project] = true;
    }
  }
  return reached;
}

class UseCollector {
 public:
  UseCollector(const MemberCollection& members, const GroupDependency& group) : group_(group) {
    std::size_t number = 0;
    for (const auto& member : members) {
      byRecord_.emplace(member.get(), number);
      byLowerPath_.emplace(LowerCase(member->path), number++);
    }
  }

  std::vector<std::size_t> UsesOf(const clsMember& member) const {
    std::vector<std::size_t> uses;
    Procedure::IgnoringErrors().Run([&](Procedure& on) {
      for (const auto* values : {&member.Refs, &member.Objects}) {
        for (const std::string& value : *values) {
          const auto used = on([&] { return UsedBy(member, value); });
          if (used && std::find(uses.begin(), uses.end(), *used) == uses.end()) {
            uses.push_back(*used);
          }
        }
      }
    });
    return uses;
  }

 private:
  [[nodiscard]] std::optional<std::size_t> UsedBy(const clsMember& member,
                                                  const std::string& value) const {
    if (const auto file = ProjectFileOf(value)) {
      const auto found = byLowerPath_.find(LowerCase(ResolvedPath(StripPath(member.path), *file)));
      if (found == byLowerPath_.end()) return std::nullopt;
      return found->second;
    }
    const clsMember* producer = group_.FindProducer(ComponentPath(value), member.path);
    return producer != nullptr ? std::optional(byRecord_.at(producer)) : std::nullopt;
  }

  const GroupDependency& group_;
  std::unordered_map<const clsMember*, std::size_t> byRecord_;
  Numbers byLowerPath_;
};

}  // namespace

DependencyGraph::DependencyGraph(const MemberCollection& members, const GroupDependency& group) {
  const UseCollector collector(members, group);
  for (const auto& member : members) uses_.push_back(collector.UsesOf(*member));
}

std::vector<std::vector<std::size_t>> DependencyGraph::Users() const {
  std::vector<std::vector<std::size_t>> users(Count());
  for (std::size_t project = 0; project < Count(); ++project) {
    for (const std::size_t used : uses_[project]) users[used].push_back(project);
  }
  return users;
}

std::vector<std::size_t> DependencyGraph::WithUses(std::size_t project) const {
  return Reached(project, uses_);
}

std::vector<std::size_t> DependencyGraph::WithUsers(std::size_t project) const {
  return Reached(project, Users());
}

std::vector<std::vector<std::size_t>> DependencyGraph::Components() const {
  return ComponentSearch(uses_).Run();
}

std::vector<std::size_t> DependencyGraph::BuildOrder() const {
  std::vector<std::size_t> order;
  for (const auto& component : Components()) {
    order.insert(order.end(), component.begin(), component.end());
  }
  return order;
}

std::vector<std::vector<std::size_t>> DependencyGraph::Cycles() const {
  auto components = Components();
  std::erase_if(components, [](const auto& component) { return component.size() < 2; });
  return components;
}

std::vector<std::vector<std::string>> CyclesOf(const DependencyGraph& graph,
                                               const MemberCollection& members) {
  std::vector<std::string> paths;
  for (const auto& member : members) paths.push_back(member->path);
  std::vector<std::vector<std::string>> cycles;
  for (const auto& cycle : graph.Cycles()) {
    auto& names = cycles.emplace_back();
    for (const std::size_t project : cycle) names.push_back(paths[project]);
  }
  return cycles;
}

}  // namespace gorbex
