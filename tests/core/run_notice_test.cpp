#include "core/run_notice.h"

#include <gtest/gtest.h>

#include "tests/support/scripted_processes.h"

namespace gorbex::test {
namespace {

using std::chrono::seconds;

TEST(RunNotice, TellsOnceOfALongRunThatNobodyLooksAt) {
  struct Case {
    seconds duration;
    bool isInFront;
    std::size_t projects;
    std::string told;
  };
  const Case cases[] = {{seconds(10), false, 2, ""},
                        {seconds(11), true, 2, ""},
                        {seconds(11), false, 2, "1 built, 1 failed;"},
                        {seconds(11), false, 3, "Go on?;"}};
  for (const Case& each : cases) {
    ManualClock clock;
    RunEvents events;
    RunNotice notice(events, clock);
    std::string told;
    const auto listening = notice.due.Connect([&](const std::string& text) { told += text + ";"; });
    notice.isInFront = [&] { return each.isInFront; };
    events.Emit(RunStarted{std::vector<std::string>(each.projects, "C:\\A.vbp")});
    events.Emit(ProjectStarted{"a", 1, each.projects});
    events.Emit(QuestionAsked{{"Early"}});
    clock.elapsed += each.duration;
    events.Emit(ProjectCompiled{"a", true, each.duration, "", ""});
    events.Emit(ProjectCompiled{"b", false, each.duration, "", ""});
    const RunEnded end{RunResult::Finished, 1, 1, each.duration};
    if (each.projects == 2) events.Emit(RunDone{end});
    events.Emit(QuestionAsked{{"Go on?"}});
    events.Emit(end);
    clock.elapsed += seconds(60);
    events.Emit(RunEnded{RunResult::Refused, 0, 0, seconds(0)});
    EXPECT_EQ(told, each.told) << each.projects;
  }
}

}  // namespace
}  // namespace gorbex::test
