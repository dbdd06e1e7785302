#pragma once

#include <cstddef>
#include <string>
#include <string_view>
#include <vector>

#include "analysis/dependency_graph.h"

namespace gorbex {

// The picture of a group: every project a box, to the right of all that it uses. Lengths are units
// of which a text of this size is as high as in the lists of an ordinary screen.

inline constexpr double kPictureTextSize = 12;
inline constexpr double kPictureMark = 16;     ///< room for the mark of a state, left in each box
inline constexpr double kPicturePadding = 8;   ///< between a box and what it holds
inline constexpr double kPictureHeading = 28;  ///< height of the headings of the levels

struct PicturePoint {
  double x = 0;
  double y = 0;
};

struct GroupBox {
  std::size_t level = 0;  ///< 0 uses no other; else one above the highest that it uses
  double x = 0;           ///< of the upper left corner
  double y = 0;
  double width = 0;  ///< enough for the name and the mark of a state
  double height = 0;
  bool isInCircle = false;
  std::size_t uses = 0;   ///< how many projects it uses
  std::size_t users = 0;  ///< how many use it
};

/// A part of the lines that lead to one project: a cubic curve, drawn once however many lines go
/// through it.
struct GroupCurve {
  std::size_t used = 0;
  bool isInCircle = false;
  PicturePoint start, control1, control2, end;  ///< the end is nearer to the used project
};

struct GroupLine {
  std::size_t user = 0;
  std::size_t used = 0;
  std::vector<std::size_t> curves;  ///< from the user to the used one
};

/// The room of one level, between top and bottom of the picture.
struct GroupBand {
  double x = 0;
  double width = 0;
};

struct GroupLayout {
  std::vector<GroupBox> boxes;  ///< by the project's number
  std::vector<GroupCurve> curves;
  std::vector<GroupLine> lines;
  std::vector<GroupBand> levels;
  std::size_t leftOut = 0;  ///< lines that others imply, not drawn in large groups
  double width = 0;
  double height = 0;
};

/// The level of each project; those that use one another in a circle have the same.
[[nodiscard]] std::vector<std::size_t> LevelsOf(const DependencyGraph& graph);

/// The most width that a text (UTF-8) of the picture takes, in fonts without serifs.
[[nodiscard]] double PictureTextWidth(std::string_view utf8);

/// A project of the picture. All texts in pictures are UTF-8.
struct PictureProject {
  std::string name;
  std::string path;
};

/// Lays out a group; the projects are by their numbers. The same group gives the same picture.
[[nodiscard]] GroupLayout LayOut(const DependencyGraph& graph,
                                 const std::vector<PictureProject>& projects);

}  // namespace gorbex
