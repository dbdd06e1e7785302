#pragma once

#include <cstddef>
#include <vector>

namespace gorbex {

inline constexpr double kBoxHeight = 26;  ///< in the units of the picture

/// A box, or the place where the lines to one project pass through a column.
struct PictureNode {
  std::size_t column = 0;
  std::size_t project = 0;  ///< or the used one, of lines that pass
  bool isBox = true;
  std::vector<std::size_t>
      left{};  ///< the nodes that it is joined to in the column before, and in the one after
  std::vector<std::size_t> right{};
  std::size_t place = 0;  ///< in its column, from the top
  double middle = 0;      ///< its y
};

using PictureColumns = std::vector<std::vector<std::size_t>>;  ///< the nodes of each, from the top

/// Orders the nodes of each column so that few lines cross; members of a knot stay together.
void OrderColumns(std::vector<PictureNode>& nodes, PictureColumns& columns,
                  const std::vector<std::size_t>& knotOf);

/// Finds a height for each node: near what it is joined to, in the order of its column, and far
/// enough from its neighbours there.
void PlaceInColumns(std::vector<PictureNode>& nodes, const PictureColumns& columns);

}  // namespace gorbex
