#include <chrono>

#include "core/file_tools.h"
#include "platform/code_page.h"
#include "tests/support/build_fixture.h"

namespace gorbex::test {
namespace {

using namespace std::chrono;

class MailDayTest : public BuildFixture {
 protected:
  static constexpr seconds kInterval{30};

  MailDayTest() {
    Load({"Core"});
    program.options.Interval = static_cast<std::int32_t>(kInterval.count());
    program.window.menu.mnuToolsInBox.Execute();
  }

  /// Lets the service tick for a time, with one request at the beginning of each hour.
  void Serve(seconds time) {
    for (seconds passed{0}; passed < time; passed += kInterval) {
      if (passed % hours(1) == seconds(0)) {
        platform.mail.received.push_back({.body = "BUILD,PRO " + Group::Path("Core") + ","});
      }
      now_ += kInterval;
      const auto since1601 = now_ - sys_days(year{1601} / January / 1);
      platform.clock.now = ToCivil({static_cast<std::uint64_t>(since1601.count()) * 10'000'000});
      platform.clock.elapsed += kInterval;
      program.window.tmrOutlook.elapsed.Emit();
      ASSERT_TRUE(program.window.tmrOutlook.enabled.Get()) << "the service goes on";
    }
  }

  /// The system's time is set, or its time zone changes.
  void SetClock(sys_seconds time) { now_ = time; }

  /// The lines of a day's log. Each bears that day's date.
  std::size_t LinesOf(const std::string& day, const std::string& date) {
    const std::string text = platform.files.Text(program.log.FileOf(day));
    EXPECT_EQ(CountOf(text, "\r\n"), CountOf(text, "[" + date + " ")) << day;
    return CountOf(text, "\r\n");
  }

  sys_seconds now_ = sys_days(year{2026} / February / 28) + hours(12);
};

TEST_F(MailDayTest, ServesThroughMidnightAndWhateverBecomesOfTheClock) {
  platform.files.Remove(program.log.FileOf(program.log.Today()));
  Serve(hours(24));
  EXPECT_EQ(platform.mail.sent.size(), 24U);
  constexpr std::size_t kLines = 1;  // for each request
  EXPECT_EQ(LinesOf("28022026", "28/02/2026"), 12 * kLines);
  EXPECT_EQ(LinesOf("01032026", "01/03/2026"), 12 * kLines);

  SetClock(sys_days(year{1980} / January / 1));
  Serve(hours(1));
  EXPECT_EQ(LinesOf("01011980", "01/01/1980"), kLines);
  SetClock(sys_days(year{2099} / December / 31) + hours(23) + minutes(59));
  Serve(hours(2));
  EXPECT_EQ(LinesOf("31122099", "31/12/2099") + LinesOf("01012100", "01/01/2100"), 2 * kLines);
  SetClock(sys_days(year{2026} / March / 1) + hours(13) - hours(14));
  Serve(hours(2));
  EXPECT_EQ(LinesOf("28022026", "28/02/2026"), 13 * kLines) << "a zone further west";
  EXPECT_EQ(LinesOf("01032026", "01/03/2026"), 13 * kLines);
  EXPECT_EQ(platform.mail.sent.size(), 29U) << "every request has one answer";
}

}  // namespace
}  // namespace gorbex::test
