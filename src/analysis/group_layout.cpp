#include "analysis/group_layout.h"

#include <algorithm>
#include <cmath>
#include <cstdint>
#include <numeric>
#include <utility>

namespace gorbex {
namespace {

using Projects = std::vector<std::size_t>;

constexpr std::size_t kWithAllLines = 200;  ///< projects; more have too many lines to see all
constexpr double kMargin = 16;
constexpr double kBoxHeight = 26;
constexpr double kBoxGap = 8;
constexpr double kColumnGap = 44;
constexpr double kMostColumnGap = 76;  ///< more, where many lines are between two columns
constexpr double kLineGap = 5;         ///< between two lines that pass through a level

/// Projects that use one another in a circle are one knot; every other project is one by itself.
struct Knots {
  explicit Knots(const DependencyGraph& graph)
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

  [[nodiscard]] Projects Levels() const {
    Projects levels(members.size(), 0);
    for (std::size_t knot = 0; knot < members.size(); ++knot) {
      for (const std::size_t used : uses[knot]) {
        levels[knot] = std::max(levels[knot], levels[used] + 1);
      }
    }
    return levels;
  }

  std::vector<Projects> members;  ///< those that others use first
  Projects of;                    ///< the knot of each project
  std::vector<Projects> uses;     ///< each once, in the order of the knots
};

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

// A knot that another used one reaches comes before that in the order of the knots.
void LeaveOutImplied(Knots& knots) {
  std::vector<NumberSet> reached(knots.members.size(), NumberSet(knots.members.size()));
  for (std::size_t knot = 0; knot < knots.members.size(); ++knot) {
    Projects kept;
    Projects& uses = knots.uses[knot];
    for (auto used = uses.rbegin(); used != uses.rend(); ++used) {
      if (reached[knot].Has(*used)) continue;
      kept.push_back(*used);
      reached[knot].Add(*used);
      reached[knot].Add(reached[*used]);
    }
    uses.assign(kept.rbegin(), kept.rend());
  }
}

/// A box, or the place where the lines to one project pass through a column.
struct Node {
  std::size_t column = 0;
  std::size_t project = 0;  ///< or the used one, of lines that pass
  bool isBox = true;
  Projects left{};  ///< the nodes that it is joined to in the column before, and in the one after
  Projects right{};
  std::size_t place = 0;  ///< in its column, from the top
  double middle = 0;      ///< its y
};

using Columns = std::vector<Projects>;  ///< the nodes of each, from the top

double Distance(const Node& above, const Node& below) {
  const double boxes = (above.isBox ? kBoxHeight / 2 : 0) + (below.isBox ? kBoxHeight / 2 : 0);
  return boxes + (above.isBox || below.isBox ? kBoxGap : kLineGap);
}

/// Orders the nodes of each column so that few lines cross.
class Ordering {
 public:
  Ordering(std::vector<Node>& nodes, Columns& columns, const Projects& knotOf)
      : nodes_(nodes), columns_(columns), knotOf_(knotOf) {}

  void Run() {
    constexpr int kSweeps = 12;
    Columns best = columns_;
    std::size_t fewest = static_cast<std::size_t>(-1);
    Number();
    for (int sweep = 0; sweep < kSweeps && fewest > 0; ++sweep) {
      Sweep(sweep % 2 == 0);
      const std::size_t crossings = Crossings();
      if (crossings >= fewest) continue;
      fewest = crossings;
      best = columns_;
    }
    columns_ = std::move(best);
    Number();
  }

 private:
  /// Where a node wants to be; members of a circle stay together.
  struct Wish {
    double place = 0;
    std::size_t group = 0;  ///< place of the circle's first member, or its own
    std::size_t own = 0;
    std::size_t node = 0;
  };

  void Number() {
    for (const Projects& column : columns_) Number(column);
  }

  void Number(const Projects& column) {
    for (std::size_t place = 0; place < column.size(); ++place) nodes_[column[place]].place = place;
  }

  void Sweep(bool isToTheRight) {
    for (std::size_t i = 0; i < columns_.size(); ++i) {
      Sort(columns_[isToTheRight ? i : columns_.size() - 1 - i], isToTheRight);
    }
  }

  void Sort(Projects& column, bool byLeft) {
    std::vector<Wish> wishes;
    wishes.reserve(column.size());
    for (const std::size_t number : column) {
      const Node& node = nodes_[number];
      const Projects& joined = byLeft ? node.left : node.right;
      const Projects& others = columns_[OtherColumn(node, byLeft)];
      wishes.push_back(
          {WishOf(node, joined, column.size(), others.size()), node.place, node.place, number});
    }
    JoinCircles(wishes);
    std::sort(wishes.begin(), wishes.end(), [](const Wish& a, const Wish& b) {
      if (a.place != b.place) return a.place < b.place;
      return std::pair(a.group, a.own) < std::pair(b.group, b.own);
    });
    for (std::size_t i = 0; i < column.size(); ++i) column[i] = wishes[i].node;
    Number(column);
  }

  [[nodiscard]] std::size_t OtherColumn(const Node& node, bool isLeft) const {
    if (isLeft) return node.column == 0 ? 0 : node.column - 1;
    return std::min(node.column + 1, columns_.size() - 1);
  }

  // As a part of the column, since columns are not equally full.
  [[nodiscard]] double WishOf(const Node& node, const Projects& joined, std::size_t inColumn,
                              std::size_t inOther) const {
    if (joined.empty()) {
      return (static_cast<double>(node.place) + 0.5) / static_cast<double>(inColumn);
    }
    double sum = 0;
    for (const std::size_t other : joined) sum += static_cast<double>(nodes_[other].place) + 0.5;
    return sum / static_cast<double>(joined.size()) / static_cast<double>(inOther);
  }

  void JoinCircles(std::vector<Wish>& wishes) const {
    struct Circle {
      double sum = 0;
      std::size_t count = 0;
      std::size_t first = 0;
    };
    std::vector<std::pair<std::size_t, Circle>> circles;
    const auto circleOf = [&](const Wish& wish) -> Circle* {
      const Node& node = nodes_[wish.node];
      if (!node.isBox) return nullptr;
      const std::size_t knot = knotOf_[node.project];
      if (!circles.empty() && circles.back().first == knot) return &circles.back().second;
      return &circles.emplace_back(knot, Circle{0, 0, wish.own}).second;
    };
    // Members follow one another already, as they did from the start.
    Projects of(wishes.size(), 0);
    for (std::size_t i = 0; i < wishes.size(); ++i) {
      Circle* circle = circleOf(wishes[i]);
      if (circle == nullptr) continue;
      circle->sum += wishes[i].place;
      ++circle->count;
      of[i] = circles.size();
    }
    for (std::size_t i = 0; i < wishes.size(); ++i) {
      if (of[i] == 0) continue;
      const Circle& circle = circles[of[i] - 1].second;
      wishes[i].place = circle.sum / static_cast<double>(circle.count);
      wishes[i].group = circle.first;
    }
  }

  [[nodiscard]] std::size_t Crossings() const {
    std::size_t count = 0;
    for (std::size_t i = 0; i + 1 < columns_.size(); ++i) count += CrossingsAfter(i);
    return count;
  }

  // Line by line from the top, those before it that end below it: a Fenwick tree counts them.
  [[nodiscard]] std::size_t CrossingsAfter(std::size_t column) const {
    const std::size_t size = columns_[column + 1].size();
    Projects tree(size + 1, 0);
    std::size_t lines = 0;
    std::size_t crossings = 0;
    Projects ends;
    for (const std::size_t number : columns_[column]) {
      ends.clear();
      for (const std::size_t right : nodes_[number].right) ends.push_back(nodes_[right].place);
      for (const std::size_t end : ends) {
        std::size_t notBelow = 0;
        for (std::size_t i = end + 1; i > 0; i &= i - 1) notBelow += tree[i];
        crossings += lines - notBelow;
      }
      for (const std::size_t end : ends) {
        for (std::size_t i = end + 1; i <= size; i += i & (~i + 1)) ++tree[i];
      }
      lines += ends.size();
    }
    return crossings;
  }

  std::vector<Node>& nodes_;
  Columns& columns_;
  const Projects& knotOf_;
};

/// Finds a height for each node: near what it is joined to, in the order of its column, and far
/// enough from its neighbours there.
class Heights {
 public:
  Heights(std::vector<Node>& nodes, const Columns& columns) : nodes_(nodes), columns_(columns) {}

  void Run() {
    constexpr int kSweeps = 10;
    for (const Projects& column : columns_) Stack(column);
    for (int sweep = 0; sweep < kSweeps; ++sweep) {
      for (std::size_t i = 0; i < columns_.size(); ++i) {
        Settle(columns_[sweep % 2 == 0 ? i : columns_.size() - 1 - i]);
      }
    }
  }

 private:
  struct Block {
    double sum;     ///< of weighted wishes
    double weight;  ///< of all its nodes
    std::size_t count;
    [[nodiscard]] double Place() const { return sum / weight; }
  };

  void Stack(const Projects& column) {
    double y = 0;
    for (std::size_t i = 0; i < column.size(); ++i) {
      if (i > 0) y += Distance(nodes_[column[i - 1]], nodes_[column[i]]);
      nodes_[column[i]].middle = y;
    }
    for (const std::size_t node : column) nodes_[node].middle -= y / 2;
  }

  // Without the least distances the wishes only have to be in order; neighbours that are not are
  // moved to the mean of their wishes, which is where the squares of all ways are least.
  void Settle(const Projects& column) {
    std::vector<Block> blocks;
    std::vector<double> offsets;
    double offset = 0;
    for (std::size_t i = 0; i < column.size(); ++i) {
      const Node& node = nodes_[column[i]];
      if (i > 0) offset += Distance(nodes_[column[i - 1]], node);
      offsets.push_back(offset);
      const double weight = node.isBox ? 1 : 2;
      blocks.push_back({(WishOf(node) - offset) * weight, weight, 1});
      while (blocks.size() > 1 && blocks[blocks.size() - 2].Place() > blocks.back().Place()) {
        const Block last = blocks.back();
        blocks.pop_back();
        blocks.back().sum += last.sum;
        blocks.back().weight += last.weight;
        blocks.back().count += last.count;
      }
    }
    std::size_t i = 0;
    for (const Block& block : blocks) {
      for (std::size_t n = 0; n < block.count; ++n, ++i) {
        nodes_[column[i]].middle = block.Place() + offsets[i];
      }
    }
  }

  // A line that passes through many columns should be straight.
  [[nodiscard]] double WishOf(const Node& node) const {
    double sum = 0;
    double weights = 0;
    for (const Projects* joined : {&node.left, &node.right}) {
      for (const std::size_t other : *joined) {
        const double weight = !node.isBox && !nodes_[other].isBox ? 6 : 1;
        sum += nodes_[other].middle * weight;
        weights += weight;
      }
    }
    return weights == 0 ? node.middle : sum / weights;
  }

  std::vector<Node>& nodes_;
  const Columns& columns_;
};

class Layouter {
 public:
  Layouter(const DependencyGraph& graph, const std::vector<std::string>& names)
      : graph_(graph), names_(names), knots_(graph), levels_(knots_.Levels()) {
    layout_.boxes.resize(graph.Count());
  }

  GroupLayout Run() {
    if (graph_.Count() > kWithAllLines) LeaveOutImplied(knots_);
    KeepLines();
    FillColumns();
    MakeNodes();
    Ordering(nodes_, columns_, knots_.of).Run();
    Heights(nodes_, columns_).Run();
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
        const Node& node = nodes_[number];
        lines += node.right.size();
        if (node.isBox) width = std::max(width, PictureTextWidth(names_[node.project]));
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
    for (const Node& node : nodes_) {
      top = std::min(top, node.middle - kBoxHeight / 2);
      bottom = std::max(bottom, node.middle + kBoxHeight / 2);
    }
    const double down = kMargin + kPictureHeading - top;
    for (Node& node : nodes_) node.middle += down;
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

  [[nodiscard]] double RightOf(const Node& node) const {
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
    const Node& user = nodes_[line.user];
    const Node& used = nodes_[line.used];
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
  const std::vector<std::string>& names_;
  Knots knots_;
  Projects levels_;  ///< by knot
  Projects columnOf_;
  Projects firstColumns_;  ///< of each level, then the number of columns
  Columns columns_;
  std::vector<Node> nodes_;     ///< the projects' first
  std::vector<Projects> ways_;  ///< by used project: through which nodes lines pass
  Projects curveInto_;          ///< by node of a way: the curve that leads on, then its passage
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
  const Knots knots(graph);
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

GroupLayout LayOut(const DependencyGraph& graph, const std::vector<std::string>& names) {
  return Layouter(graph, names).Run();
}

}  // namespace gorbex
