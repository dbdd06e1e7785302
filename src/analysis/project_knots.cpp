#include "analysis/project_knots.h"

#include <algorithm>
#include <cstdint>

namespace gorbex {
namespace {

using Projects = std::vector<std::size_t>;

/// A set of numbers below a limit.
class NumberSet {
 public:
  explicit NumberSet(std::size_t limit) : words_((limit + 63) / 64, 0) {}
  void Add(std::size_t number) { words_[number / 64] |= std::uint64_t{1} << (number % 64); }
  void Add(const NumberSet& other) {
    for (std::size_t i = 0; i < words_.size(); ++i) words_[i] |= other.words_[i];
  }
  [[nodiscard]] bool Has(std::size_t number) const {
    return (words_[number / 64] >> (number % 64) & 1U) != 0;
  }

 private:
  std::vector<std::uint64_t> words_;
};

}  // namespace

ProjectKnots::ProjectKnots(const DependencyGraph& graph)
    : members(graph.Components()), of(graph.Count()), uses(members.size()) {
  for (std::size_t knot = 0; knot < members.size(); ++knot) {
    for (const std::size_t project : members[knot]) of[project] = knot;
  }
  for (std::size_t project = 0; project < graph.Count(); ++project) {
    for (const std::size_t used : graph.UsesOf(project)) {
      if (of[used] != of[project]) uses[of[project]].push_back(of[used]);
    }
  }
  for (Projects& each : uses) {
    std::sort(each.begin(), each.end());
    each.erase(std::unique(each.begin(), each.end()), each.end());
  }
}

std::vector<std::size_t> ProjectKnots::Levels() const {
  Projects levels(members.size(), 0);
  for (std::size_t knot = 0; knot < members.size(); ++knot) {
    for (const std::size_t used : uses[knot]) {
      levels[knot] = std::max(levels[knot], levels[used] + 1);
    }
  }
  return levels;
}

// A knot that another used one reaches comes before that in the order of the knots.
void ProjectKnots::LeaveOutImplied() {
  std::vector<NumberSet> reached(members.size(), NumberSet(members.size()));
  for (std::size_t knot = 0; knot < members.size(); ++knot) {
    Projects kept;
    Projects& all = uses[knot];
    for (auto used = all.rbegin(); used != all.rend(); ++used) {
      if (reached[knot].Has(*used)) continue;
      kept.push_back(*used);
      reached[knot].Add(*used);
      reached[knot].Add(reached[*used]);
    }
    all.assign(kept.rbegin(), kept.rend());
  }
}

}  // namespace gorbex
