#include "analysis/picture_columns.h"

#include <algorithm>
#include <utility>

namespace gorbex {
namespace {

using Projects = std::vector<std::size_t>;

constexpr double kBoxGap = 8;
constexpr double kLineGap = 5;  ///< between two lines that pass through a level

double Distance(const PictureNode& above, const PictureNode& below) {
  const double boxes = (above.isBox ? kBoxHeight / 2 : 0) + (below.isBox ? kBoxHeight / 2 : 0);
  return boxes + (above.isBox || below.isBox ? kBoxGap : kLineGap);
}

class Ordering {
 public:
  Ordering(std::vector<PictureNode>& nodes, PictureColumns& columns, const Projects& knotOf)
      : nodes_(nodes), columns_(columns), knotOf_(knotOf) {}

  void Run() {
    constexpr int kSweeps = 12;
    PictureColumns best = columns_;
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
      const PictureNode& node = nodes_[number];
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

  [[nodiscard]] std::size_t OtherColumn(const PictureNode& node, bool isLeft) const {
    if (isLeft) return node.column == 0 ? 0 : node.column - 1;
    return std::min(node.column + 1, columns_.size() - 1);
  }

  // As a part of the column, since columns are not equally full.
  [[nodiscard]] double WishOf(const PictureNode& node, const Projects& joined, std::size_t inColumn,
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
      const PictureNode& node = nodes_[wish.node];
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

  std::vector<PictureNode>& nodes_;
  PictureColumns& columns_;
  const Projects& knotOf_;
};

class Heights {
 public:
  Heights(std::vector<PictureNode>& nodes, const PictureColumns& columns)
      : nodes_(nodes), columns_(columns) {}

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
      const PictureNode& node = nodes_[column[i]];
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
  [[nodiscard]] double WishOf(const PictureNode& node) const {
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

  std::vector<PictureNode>& nodes_;
  const PictureColumns& columns_;
};

}  // namespace

void OrderColumns(std::vector<PictureNode>& nodes, PictureColumns& columns,
                  const std::vector<std::size_t>& knotOf) {
  Ordering(nodes, columns, knotOf).Run();
}

void PlaceInColumns(std::vector<PictureNode>& nodes, const PictureColumns& columns) {
  Heights(nodes, columns).Run();
}

}  // namespace gorbex
