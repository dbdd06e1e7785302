#include "build/run_schedule.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <random>

namespace gorbex::test {
namespace {

using std::chrono::milliseconds;

/// Random runs: what the rules say, asked of every start.
TEST(RunScheduleTest, StartsNothingBeforeWhatItUsesNorBesideWhatItClaims) {
  std::mt19937 random(22);
  const auto below = [&](std::size_t limit) { return limit == 0 ? 0 : random() % limit; };
  for (int round = 0; round < 500; ++round) {
    const std::size_t count = 1 + below(30);
    const bool hasCircles = round % 3 == 0;
    std::vector<ScheduledProject> projects(count);
    for (std::size_t i = 0; i < count; ++i) {
      for (std::size_t uses = below(4); uses > 0 && (hasCircles || i > 0); --uses) {
        projects[i].uses.push_back(below(hasCircles ? count : i));
      }
      projects[i].claims = {"folder " + std::to_string(below(count))};
      if (below(2) == 0) projects[i].lastDuration = milliseconds(below(1000));
    }
    RunSchedule schedule(projects);
    std::vector<std::size_t> building;
    std::vector<bool> isDone(count, false);
    while (schedule.DoneCount() < count) {
      const auto next = building.size() < 4 ? schedule.Next() : std::nullopt;
      if (next) {
        for (const std::size_t used : projects[*next].uses) {
          EXPECT_TRUE(hasCircles || isDone[used]);
        }
        for (const std::size_t other : building) {
          EXPECT_NE(projects[other].claims, projects[*next].claims);
        }
        building.push_back(*next);
        continue;
      }
      ASSERT_FALSE(building.empty()) << "nothing may start, and nothing is awaited";
      const auto ended = building.begin() + static_cast<std::ptrdiff_t>(below(building.size()));
      isDone[*ended] = true;
      schedule.Done(*ended);
      building.erase(ended);
    }
    EXPECT_EQ(std::count(isDone.begin(), isDone.end(), true), static_cast<long>(count));
  }
}

TEST(RunScheduleTest, TakesTheLongestWayFirstAndACircleInTheOrderOfTheQueue) {
  // 0 is short, but a long one waits for it; 2 and 3 use each other, and 1 is of unknown length.
  std::vector<ScheduledProject> projects(5);
  projects[0].lastDuration = milliseconds(10);
  projects[4] = {{0}, {}, "", "", milliseconds(900)};
  projects[2] = {{3}, {}, "", "", milliseconds(100)};
  projects[3] = {{2}, {}, "", "", milliseconds(50)};
  RunSchedule schedule(projects);
  EXPECT_EQ(schedule.TimeLeft(1, {})->left, milliseconds(10 + 265 + 100 + 50 + 900));
  EXPECT_EQ(schedule.TimeLeft(4, {})->left, milliseconds(910));
  EXPECT_EQ(schedule.Next(), 0U);
  EXPECT_EQ(schedule.Next(), 1U);
  EXPECT_EQ(schedule.Next(), 2U);
  EXPECT_EQ(schedule.Next(), std::nullopt);
  schedule.Done(2);
  EXPECT_EQ(schedule.Next(), 3U);
  EXPECT_EQ(RunSchedule({{}, {}}).TimeLeft(2, {}), std::nullopt);
}

// The fourth waits for a place, and the first takes longer than last time.
TEST(RunScheduleTest, EstimatesWhatIsLeftWithoutRisingLater) {
  std::vector<ScheduledProject> projects(4);
  for (auto& project : projects) project.lastDuration = milliseconds(10);
  RunSchedule schedule(projects);
  EXPECT_EQ(schedule.TimeLeft(3, {})->left, milliseconds(20));
  while (schedule.DoneCount() < 2) schedule.Done(*schedule.Next());
  ASSERT_EQ(schedule.Next(), 2U);
  EXPECT_EQ(schedule.TimeLeft(1, {{2, milliseconds(4)}})->After(milliseconds(50)),
            milliseconds(10));
  EXPECT_EQ(schedule.TimeLeft(1, {{2, milliseconds(70)}})->left, milliseconds(10));
}

// The second writer is long; a project that uses the first, and one that reads the file to keep
// compatible with it, wait for both all the same. Who uses one of a circle waits for all of it.
TEST(RunScheduleTest, KeepsTheOrderOfTheQueueAmongThoseWhoShareAFile) {
  std::vector<ScheduledProject> projects(6);
  projects[0].writes = projects[1].writes = "both.dll";
  projects[1].lastDuration = milliseconds(900);
  projects[2].uses = {0};
  projects[3].reads = "both.dll";
  projects[4].uses = {5};
  projects[5].uses = {4};
  projects.push_back({{4}, {}, "", "", std::nullopt});
  RunSchedule schedule(projects);
  std::vector<std::size_t> order;
  while (order.size() < projects.size()) {
    std::vector<std::size_t> together;
    while (const auto next = schedule.Next()) together.push_back(*next);
    ASSERT_FALSE(together.empty());
    std::sort(together.begin(), together.end());
    for (const std::size_t project : together) {
      order.push_back(project);
      schedule.Done(project);
    }
  }
  EXPECT_EQ(order, (std::vector<std::size_t>{0, 4, 1, 5, 2, 3, 6}));
}

}  // namespace
}  // namespace gorbex::test
