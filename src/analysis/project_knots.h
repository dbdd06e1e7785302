#pragma once

#include <cstddef>
#include <vector>

#include "analysis/dependency_graph.h"

namespace gorbex {

/// Projects that use one another in a circle are one knot; every other project is one by itself.
/// Projects and knots are numbers.
struct ProjectKnots {
  explicit ProjectKnots(const DependencyGraph& graph);

  /// The level of each knot: 0 when it uses no other, else one above the highest that it uses.
  [[nodiscard]] std::vector<std::size_t> Levels() const;

  /// Leaves out uses that others imply.
  void LeaveOutImplied();

  std::vector<std::vector<std::size_t>> members;  ///< those that others use first
  std::vector<std::size_t> of;                    ///< the knot of each project
  std::vector<std::vector<std::size_t>> uses;     ///< each once, in the order of the knots
};

}  // namespace gorbex
