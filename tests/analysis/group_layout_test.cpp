#include "analysis/group_layout.h"

#include <gtest/gtest.h>

#include <chrono>
#include <cmath>
#include <random>

#include "analysis/group_svg.h"

namespace gorbex::test {
namespace {

using Uses = std::vector<std::vector<std::size_t>>;

std::vector<PictureProject> Projects(std::size_t count) {
  std::vector<PictureProject> projects;
  for (std::size_t i = 0; i < count; ++i) projects.push_back({"Project" + std::to_string(i), "p"});
  return projects;
}

/// Levels of equal size, each project using some of the lower ones; circles among the last.
Uses RandomGroup(std::size_t projects, std::size_t levels, std::size_t circles) {
  std::mt19937 random(static_cast<unsigned>(projects));
  Uses uses(projects);
  for (std::size_t i = 0; i < projects; ++i) {
    const std::size_t lower = i * levels / projects * projects / levels;
    for (std::size_t n = 0; lower > 0 && n < 8; ++n) uses[i].push_back(random() % lower);
    std::sort(uses[i].begin(), uses[i].end());
    uses[i].erase(std::unique(uses[i].begin(), uses[i].end()), uses[i].end());
  }
  for (std::size_t i = 0; i < circles; ++i) {
    uses[projects - 2 - 2 * i].push_back(projects - 1 - 2 * i);
    uses[projects - 1 - 2 * i].push_back(projects - 2 - 2 * i);
  }
  return uses;
}

// What a reader relies on: no box is over another, users are to the right of what they use, and
// every line begins at its user, ends at what it uses and has no gap.
void ExpectReadable(const GroupLayout& layout) {
  const auto& boxes = layout.boxes;
  for (std::size_t a = 0; a < boxes.size(); ++a) {
    EXPECT_GE(boxes[a].x, 0);
    EXPECT_GE(boxes[a].y, kPictureHeading);
    EXPECT_LE(boxes[a].x + boxes[a].width, layout.width);
    EXPECT_LE(boxes[a].y + boxes[a].height, layout.height);
    for (std::size_t b = a + 1; b < boxes.size(); ++b) {
      const bool isApart =
          boxes[a].x + boxes[a].width < boxes[b].x || boxes[b].x + boxes[b].width < boxes[a].x ||
          boxes[a].y + boxes[a].height < boxes[b].y || boxes[b].y + boxes[b].height < boxes[a].y;
      EXPECT_TRUE(isApart) << a << " and " << b;
    }
  }
  for (const GroupLine& line : layout.lines) {
    const GroupBox& user = boxes[line.user];
    const GroupBox& used = boxes[line.used];
    const bool isRound = user.level == used.level;
    if (isRound) {
      EXPECT_TRUE(user.isInCircle && used.isInCircle);
    } else {
      EXPECT_GT(user.x, used.x + used.width);
    }
    ASSERT_FALSE(line.curves.empty());
    PicturePoint at{isRound ? user.x + user.width : user.x, user.y + user.height / 2};
    for (const std::size_t curve : line.curves) {
      EXPECT_NEAR(layout.curves[curve].start.x, at.x, 0.01);
      EXPECT_NEAR(layout.curves[curve].start.y, at.y, isRound ? 5 : 0.01);
      EXPECT_EQ(layout.curves[curve].used, line.used);
      at = layout.curves[curve].end;
    }
    EXPECT_NEAR(at.x, used.x + used.width, 0.01);
    EXPECT_NEAR(at.y, used.y + used.height / 2, isRound ? 5 : 0.01);
  }
}

TEST(GroupLayoutTest, GroupsOfEverySizeAreReadableAndDrawnTheSameEachTime) {
  struct Case {
    Uses uses;
    std::vector<std::size_t> levels;  ///< not looked at when empty
    std::size_t leftOut;
  };
  Uses star(40);
  for (std::size_t i = 1; i < star.size(); ++i) star[i] = {0};
  Uses implied(300);
  for (std::size_t i = 1; i < implied.size(); ++i) implied[i] = {i - 1, 0};
  implied[1] = {0};
  const Case cases[] = {
      {{}, {}, 0},
      {{{}}, {0}, 0},
      {{{0}, {0}}, {0, 1}, 0},
      {{{1}, {0}, {1}, {2, 0}, {}}, {0, 0, 1, 2, 0}, 0},
      {{{}, {0}, {0, 1}, {0, 1, 2}}, {0, 1, 2, 3}, 0},
      {star, {}, 0},
      {implied, {}, 298},
      {RandomGroup(60, 6, 2), {}, 0},
      {RandomGroup(199, 3, 9), {}, 0},
  };
  for (const Case& each : cases) {
    SCOPED_TRACE(each.uses.size());
    const DependencyGraph graph(each.uses);
    const auto projects = Projects(each.uses.size());
    const GroupLayout layout = LayOut(graph, projects);
    ExpectReadable(layout);
    if (!each.levels.empty()) {
      EXPECT_EQ(LevelsOf(graph), each.levels);
    }
    EXPECT_EQ(layout.leftOut, each.leftOut);
    EXPECT_EQ(GroupSvg(layout, projects, "t"), GroupSvg(LayOut(graph, projects), projects, "t"));
  }
}

TEST(GroupLayoutTest, LargeGroupsAreLaidOutInTimeAndInTheShapeOfAScreen) {
  for (const auto& [count, most] : {std::pair(350U, 0.3), std::pair(2000U, 3.0)}) {
    const DependencyGraph graph(RandomGroup(count, 10, 3));
    const auto projects = Projects(count);
    const auto begin = std::chrono::steady_clock::now();
    const GroupLayout layout = LayOut(graph, projects);
    const std::chrono::duration<double> taken = std::chrono::steady_clock::now() - begin;
    EXPECT_LT(taken.count(), most * 5) << "without optimisation, on a busy machine";
    EXPECT_GT(layout.leftOut, 0U);
    EXPECT_LT(layout.height, layout.width * 2);
    if (count < 1000) ExpectReadable(layout);
  }
}

}  // namespace
}  // namespace gorbex::test
