#pragma once

#include <cstddef>
#include <string>
#include <utility>
#include <vector>

#include "analysis/group_dependency.h"
#include "core/member.h"

namespace gorbex {

/// Knows which projects use which: a reference names the other's binary or its project file.
/// Projects are numbered from 0 in the order of the collection.
class DependencyGraph {
 public:
  DependencyGraph(const MemberCollection& members, const GroupDependency& group);

  /// A graph whose UsesOf is given.
  explicit DependencyGraph(std::vector<std::vector<std::size_t>> uses) : uses_(std::move(uses)) {}

  [[nodiscard]] std::size_t Count() const { return uses_.size(); }

  /// The projects that one project uses, each once, in the order of its references.
  [[nodiscard]] const std::vector<std::size_t>& UsesOf(std::size_t project) const {
    return uses_[project];
  }

  /// The projects that use a project, for every project; the other direction of UsesOf.
  [[nodiscard]] std::vector<std::vector<std::size_t>> Users() const;

  /// A project and all that it uses, or all that use it, directly or through others, each once.
  [[nodiscard]] std::vector<std::size_t> WithUses(std::size_t project) const;
  [[nodiscard]] std::vector<std::size_t> WithUsers(std::size_t project) const;

  /// All projects, each after those that it uses where circles allow this; otherwise in number
  /// order.
  [[nodiscard]] std::vector<std::size_t> BuildOrder() const;

  /// The sets of projects that use one another in a circle.
  [[nodiscard]] std::vector<std::vector<std::size_t>> Cycles() const;

  /// Each circle, and every other project by itself; those that others use first.
  [[nodiscard]] std::vector<std::vector<std::size_t>> Components() const;

 private:
  std::vector<std::vector<std::size_t>> uses_;
};

/// As Cycles, by the paths of the projects.
[[nodiscard]] std::vector<std::vector<std::string>> CyclesOf(const DependencyGraph& graph,
                                                             const MemberCollection& members);

}  // namespace gorbex
