#include "analysis/group_layout.h"

#include <algorithm>
#include <cmath>
#include <utility>

#include "analysis/picture_columns.h"
#include "analysis/project_knots.h"

namespace gorbex {
namespace {

using Projects = std::vector<std::size_t>;

constexpr std::size_t kWithAllLines = 200;  ///< projects; more have too many lines to see all
constexpr double kMargin = 16;
constexpr double kColumnGap = 44;
constexpr double kMostColumnGap = 76;  ///< more, where many lines are between two columns

class Layouter {
 public:
  Layouter(const DependencyGraph& graph, const std::vector<PictureProject>& projects)
      : graph_(graph), projects_(projects), knots_(graph), levels_(knots_.Levels()) {
    layout_.boxes.resize(graph.Count());
  }

  GroupLayout Run() {
    if (graph_.Count() > kWithAllLines) knots_.LeaveOutImplied();
    KeepLines();
    FillColumns();
    MakeNodes();
    OrderColumns(nodes_, columns_, knots_.of);
    PlaceInColumns(nodes_, columns_);
    PlaceColumns();
    PlaceBoxes();
    DrawLines();
    return std::move(layout_);
  }

 private:
  void KeepLines() {
    for (std::size_t user = 0; user < graph_.Count(); ++user) {
      const std::size_t knot = knots_.of[user];
      for (const std::size_t used : graph_.UsesOf(user)) {
        if (used == user) continue;
        ++layout_.boxes[user].uses;
        ++layout_.boxes[used].users;
        const Projects& kept = knots_.uses[knot];
        const std::size_t other = knots_.of[used];
        if (other == knot || std::binary_search(kept.begin(), kept.end(), other)) {
          layout_.lines.push_back({user, used, {}});
        } else {
          ++layout_.leftOut;
        }
      }
    }
  }

  // A level that is too long takes several columns. Projects that many others use come last: then
  // fewer lines pass through the other columns of the level.
  void FillColumns() {
    const std::size_t most = MostInColumn();
    const auto knotsOfLevel = KnotsOfLevels();
    columnOf_.resize(graph_.Count());
    for (const Projects& knots : knotsOfLevel) {
      std::size_t count = 0;
      for (const std::size_t knot : knots) count += knots_.members[knot].size();
      const std::size_t columns = (count + most - 1) / most;
      const std::size_t each = (count + columns - 1) / columns;
      firstColumns_.push_back(columns_.size());
      std::size_t room = 0;
      for (const std::size_t knot : knots) {
        const Projects& members = knots_.members[knot];
        if (room == 0) columns_.emplace_back();
        if (room == 0) room = each;
        for (const std::size_t project : members) {
          columnOf_[project] = columns_.size() - 1;
          columns_.back().push_back(project);
        }
        room -= std::min(room, members.size());
      }
    }
    firstColumns_.push_back(columns_.size());
  }

  // So that the picture has about the shape of a screen.
  [[nodiscard]] std::size_t MostInColumn() const {
    return std::max<std::size_t>(
        14, static_cast<std::size_t>(std::sqrt(6.0 * static_cast<double>(graph_.Count()))));
  }

  [[nodiscard]] std::vector<Projects> KnotsOfLevels() const {
    std::vector<std::size_t> users(knots_.members.size(), 0);
    for (const Projects& uses : knots_.uses) {
      for (const std::size_t used : uses) ++users[used];
    }
    std::vector<Projects> knotsOf;
    for (std::size_t knot = 0; knot < levels_.size(); ++knot) {
      if (levels_[knot] >= knotsOf.size()) knotsOf.resize(levels_[knot] + 1);
      knotsOf[levels_[knot]].push_back(knot);
    }
    for (Projects& knots : knotsOf) {
      std::sort(knots.begin(), knots.end(), [&](std::size_t a, std::size_t b) {
        return std::pair(users[a], knots_.members[a].front()) <
               std::pair(users[b], knots_.members[b].front());
      });
    }
    return knotsOf;
  }

  // All lines to one project go the same way as far as they can.
  void MakeNodes() {
    for (std::size_t project = 0; project < graph_.Count(); ++project) {
      nodes_.push_back({columnOf_[project], project});
    }
    ways_.assign(graph_.Count(), {});
    for (const GroupLine& line : layout_.lines) {
      if (columnOf_[line.user] == columnOf_[line.used]) continue;
      Join(WayTo(line.used, columnOf_[line.user] - 1), line.user);
    }
  }

  /// The node in a column through which lines to a project pass.
  std::size_t WayTo(std::size_t used, std::size_t column) {
    Projects& way = ways_[used];
    std::size_t last = way.empty() ? used : way.back();
    while (nodes_[last].column < column) {
      const std::size_t next = nodes_.size();
      nodes_.push_back({nodes_[last].column + 1, used, false});
      columns_[nodes_[next].column].push_back(next);
      way.push_back(next);
      Join(last, next);
      last = next;
    }
    return column == columnOf_[used] ? used : way[column - columnOf_[used] - 1];
  }

  void Join(std::size_t left, std::size_t right) {
    nodes_[left].right.push_back(right);
    nodes_[right].left.push_back(left);
  }

  void PlaceColumns() {
    double x = kMargin;
    lefts_.resize(columns_.size());
    widths_.resize(columns_.size());
    for (std::size_t i = 0; i < columns_.size(); ++i) {
      std::size_t lines = 0;
      double width = 0;
      for (const std::size_t number : columns_[i]) {
        const PictureNode& node = nodes_[number];
        lines += node.right.size();
        if (node.isBox) width = std::max(width, PictureTextWidth(projects_[node.project].name));
      }
      lefts_[i] = x;
      widths_[i] = width + kPictureMark + 2 * kPicturePadding;
      x += widths_[i] + kColumnGap + std::min(kMostColumnGap, static_cast<double>(lines) / 2);
    }
    for (std::size_t level = 0; level + 1 < firstColumns_.size(); ++level) {
      const double left = lefts_[firstColumns_[level]];
      const std::size_t last = firstColumns_[level + 1] - 1;
      layout_.levels.push_back({left - kMargin / 2, lefts_[last] + widths_[last] - left + kMargin});
    }
    layout_.width =
        columns_.empty() ? 2 * kMargin : lefts_.back() + widths_.back() + RoomForBows() + kMargin;
  }

  // The lines of a circle in the last column bend outwards.
  [[nodiscard]] double RoomForBows() const {
    return std::any_of(layout_.lines.begin(), layout_.lines.end(),
                       [&](const GroupLine& line) {
                         return columnOf_[line.user] == columnOf_[line.used] &&
                                columnOf_[line.user] + 1 == columns_.size();
                       })
               ? kMostBow
               : 0;
  }

  void PlaceBoxes() {
    double top = 0;
    double bottom = 0;
    for (const PictureNode& node : nodes_) {
      top = std::min(top, node.middle - kBoxHeight / 2);
      bottom = std::max(bottom, node.middle + kBoxHeight / 2);
    }
    const double down = kMargin + kPictureHeading - top;
    for (PictureNode& node : nodes_) node.middle += down;
    for (std::size_t project = 0; project < graph_.Count(); ++project) {
      const std::size_t column = columnOf_[project];
      const std::size_t knot = knots_.of[project];
      GroupBox& box = layout_.boxes[project];
      box.level = levels_[knot];
      box.x = lefts_[column];
      box.y = nodes_[project].middle - kBoxHeight / 2;
      box.width = widths_[column];
      box.height = kBoxHeight;
      box.isInCircle = knots_.members[knot].size() > 1;
    }
    layout_.height = bottom + down + kMargin;
  }

  void DrawLines() {
    curveInto_.assign(nodes_.size(), kNone);
    for (GroupLine& line : layout_.lines) {
      if (columnOf_[line.user] == columnOf_[line.used]) {
        line.curves = {AddBow(line)};
      } else {
        DrawLine(line);
      }
    }
  }

  void DrawLine(GroupLine& line) {
    std::size_t column = columnOf_[line.user] - 1;
    const std::size_t first = WayTo(line.used, column);
    line.curves.push_back(AddCurve(line.used, line.user, first));
    for (std::size_t node = first; node != line.used;) {
      const std::size_t next = WayTo(line.used, --column);
      if (curveInto_[node] == kNone) {
        curveInto_[node] = AddCurve(line.used, node, next);
        AddPassage(line.used, node);
      }
      line.curves.push_back(curveInto_[node] + 1);
      line.curves.push_back(curveInto_[node]);
      node = next;
    }
  }

  [[nodiscard]] double RightOf(const PictureNode& node) const {
    return lefts_[node.column] + widths_[node.column];
  }

  std::size_t AddCurve(std::size_t used, std::size_t right, std::size_t left) {
    const PicturePoint start{lefts_[nodes_[right].column], nodes_[right].middle};
    const PicturePoint end{RightOf(nodes_[left]), nodes_[left].middle};
    const double bend = (start.x + end.x) / 2;
    layout_.curves.push_back({used, false, start, {bend, start.y}, {bend, end.y}, end});
    return layout_.curves.size() - 1;
  }

  void AddPassage(std::size_t used, std::size_t node) {
    const PicturePoint start{RightOf(nodes_[node]), nodes_[node].middle};
    const PicturePoint end{lefts_[nodes_[node].column], nodes_[node].middle};
    layout_.curves.push_back({used, false, start, start, end, end});
  }

  std::size_t AddBow(const GroupLine& line) {
    const PictureNode& user = nodes_[line.user];
    const PictureNode& used = nodes_[line.used];
    const double bow = std::min(kMostBow, 14 + std::abs(user.middle - used.middle) / 4);
    const double x = RightOf(user);
    // Two projects that use one another have two lines, which must not be one.
    const double out = x + bow * (line.user < line.used ? 1 : 1.3);
    layout_.curves.push_back({line.used,
                              true,
                              {x, user.middle + 4},
                              {out, user.middle + 4},
                              {out, used.middle - 4},
                              {x, used.middle - 4}});
    return layout_.curves.size() - 1;
  }

  static constexpr std::size_t kNone = static_cast<std::size_t>(-1);
  static constexpr double kMostBow = 36;

  const DependencyGraph& graph_;
  const std::vector<PictureProject>& projects_;
  ProjectKnots knots_;
  Projects levels_;  ///< by knot
  Projects columnOf_;
  Projects firstColumns_;  ///< of each level, then the number of columns
  PictureColumns columns_;
  std::vector<PictureNode> nodes_;  ///< the projects' first
  std::vector<Projects> ways_;      ///< by used project: through which nodes lines pass
  Projects curveInto_;              ///< by node of a way: the curve that leads on, then its passage
  std::vector<double> lefts_;
  std::vector<double> widths_;
  GroupLayout layout_;
};

// Widths as parts of the text's size, those of a wide font.
double WidthOf(char letter) {
  constexpr std::string_view kNarrow = "ijlftrI.,:;'|!()[]{}- /\\";
  constexpr std::string_view kWide = "mwMW@%";
  if (kNarrow.find(letter) != std::string_view::npos) return 0.42;
  if (kWide.find(letter) != std::string_view::npos) return 1;
  const bool isFirstByte = (static_cast<unsigned char>(letter) & 0xC0U) != 0x80U;
  if (!isFirstByte) return 0;
  return letter >= 'a' && letter <= 'z' ? 0.64 : 0.78;
}

}  // namespace

std::vector<std::size_t> LevelsOf(const DependencyGraph& graph) {
  const ProjectKnots knots(graph);
  const Projects levels = knots.Levels();
  Projects levelsOf;
  for (const std::size_t knot : knots.of) levelsOf.push_back(levels[knot]);
  return levelsOf;
}

double PictureTextWidth(std::string_view utf8) {
  double width = 0;
  for (const char letter : utf8) width += WidthOf(letter);
  return width * kPictureTextSize;
}

GroupLayout LayOut(const DependencyGraph& graph, const std::vector<PictureProject>& projects) {
  return Layouter(graph, projects).Run();
}

}  // namespace gorbex
