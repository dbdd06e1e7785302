#include "build/run_timeline.h"

#include <gtest/gtest.h>

#include "report/timeline_layout.h"

namespace gorbex::test {
namespace {

using std::chrono::milliseconds;

struct Built {
  std::size_t place;
  int start;
  int duration;
};

RunTimeline TimelineOf(const std::vector<Built>& projects,
                       const std::vector<std::vector<std::size_t>>& uses, int length) {
  std::vector<std::string> paths;
  for (std::size_t i = 0; i < projects.size(); ++i) paths.push_back(std::to_string(i));
  RunRecord record(paths);
  for (std::size_t i = 0; i < projects.size(); ++i) {
    ProjectStarted started{paths[i], i + 1, projects.size(), projects[i].place};
    started.start = milliseconds(projects[i].start);
    record.On(started);
    if (projects[i].duration < 0) continue;  // still being built
    if (projects[i].duration == 0) record.On(ProjectUpToDate{paths[i], ""});
    if (projects[i].duration == 0) continue;
    record.On(ProjectCompiled{paths[i], true, milliseconds(projects[i].duration), "", ""});
  }
  return TimelineOf(record, uses, milliseconds(length));
}

TEST(RunTimelineTest, LeadsTheCriticalPathBackThroughUsesAndPlaces) {
  struct Case {
    const char* what;
    std::vector<Built> projects;
    std::vector<std::vector<std::size_t>> uses;
    std::vector<std::size_t> path;  // projects
    std::vector<std::size_t> slowest;
  };
  const std::vector<Case> cases = {
      {"nothing", {}, {}, {}, {}},
      {"one place", {{1, 0, 5}, {1, 5, 9}, {1, 14, 2}}, {{}, {}, {}}, {0, 1, 2}, {1, 0, 2}},
      {"the used one ended later than the one on the place",
       {{1, 0, 5}, {2, 0, 9}, {1, 9, 3}},
       {{}, {}, {1}},
       {1, 2},
       {1, 0, 2}},
      {"the place was free later than the used one was built",
       {{1, 0, 4}, {2, 0, 9}, {2, 9, 3}},
       {{}, {}, {0}},
       {1, 2},
       {1, 0, 2}},
      {"in a circle the later one is not waited for",
       {{1, 0, 4}, {2, 4, 5}},
       {{1}, {0}},
       {0, 1},
       {1, 0}},
      {"nobody waits for one that is up to date", {{1, 0, 0}, {1, 0, 4}}, {{}, {0}}, {1}, {1}},
      {"one is still being built", {{1, 0, 4}, {2, 1, -1}}, {{}, {}}, {1}, {1, 0}},
  };
  for (const Case& each : cases) {
    const RunTimeline timeline = TimelineOf(each.projects, each.uses, 20);
    std::vector<std::size_t> path;
    for (const std::size_t bar : timeline.criticalPath) {
      EXPECT_TRUE(timeline.bars[bar].isCritical);
      path.push_back(timeline.bars[bar].project);
    }
    EXPECT_EQ(path, each.path) << each.what;
    std::vector<std::size_t> slowest;
    for (const std::size_t bar : timeline.Slowest()) slowest.push_back(timeline.bars[bar].project);
    EXPECT_EQ(slowest, each.slowest) << each.what;
  }
}

TEST(TimelineLayoutTest, FindsTheBarUnderThePointer) {
  const RunTimeline timeline = TimelineOf({{1, 0, 100}, {2, 0, 1}, {1, 500, 500}}, {}, 1000);
  const TimelineLayout layout(timeline, {200, 10, 2, 4});
  EXPECT_EQ(layout.Height(), 24);
  const auto box = layout.BoxOf(timeline.bars[1]);
  EXPECT_EQ(box.y, 12);
  EXPECT_EQ(box.width, 4) << "however short it is";
  EXPECT_EQ(layout.BarAt(10, 5), 0U);
  EXPECT_EQ(layout.BarAt(3, 15), 1U);
  EXPECT_EQ(layout.BarAt(199, 0), 2U);
  EXPECT_EQ(layout.BarAt(60, 5), std::nullopt);
  EXPECT_EQ(layout.BarAt(3, 11), std::nullopt) << "between the lanes";
}

TEST(TimelineLayoutTest, NamesRoundMoments) {
  struct Case {
    int length;
    std::string last;
    std::size_t count;
  };
  for (const Case& each : std::vector<Case>{{0, "0.000 s", 1},
                                            {4, "0.004 s", 5},
                                            {900, "0.8 s", 5},
                                            {9'500, "8 s", 5},
                                            {61'000, "1:00", 4},
                                            {36'000'000, "600:00", 6}}) {
    const auto ticks = TicksOf(milliseconds(each.length), 6);
    EXPECT_EQ(ticks.back().text, each.last) << each.length;
    EXPECT_LE(ticks.size(), 6U);
  }
}

}  // namespace
}  // namespace gorbex::test
