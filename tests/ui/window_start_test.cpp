#include "ui/window_arguments.h"

#include <gtest/gtest.h>

#include <limits>

#include "ui/chooser_folders.h"
#include "ui/column_widths.h"
#include "ui/window_place.h"

namespace gorbex::ui {
namespace {

TEST(WindowArguments, NameOneFileAndAPrefixWhereThereIsOne) {
  using Words = std::vector<std::string>;
  constexpr int kGoesOn = -1;
  struct Case {
    Words words;
    PrefixOption option;
    int exitStatus;
    std::string typed;
    std::string prefix;
  };
  const Case cases[] = {
      {{}, PrefixOption::None, kGoesOn, "", ""},
      {{"a.bpf"}, PrefixOption::None, kGoesOn, "a.bpf", ""},
      {{"a.bpf", "b.bpf"}, PrefixOption::None, 2, "", ""},
      {{"a.bpf", "--version"}, PrefixOption::None, 0, "", ""},
      {{"/help"}, PrefixOption::None, kGoesOn, "/help", ""},
      {{"--prefix", "p", "show"}, PrefixOption::Offered, kGoesOn, "show", "p"},
      {{"--prefix=p"}, PrefixOption::Offered, kGoesOn, "", "p"},
      {{"--prefix="}, PrefixOption::Offered, 2, "", ""},
      {{"--prefix"}, PrefixOption::Offered, 2, "", ""},
      {{"--prefix", "p"}, PrefixOption::None, 2, "", ""},
  };
  for (const auto& [words, option, exitStatus, typed, prefix] : cases) {
    const auto arguments = WindowArgumentsOf(words, option);
    const std::string first = words.empty() ? "" : words.front();
    EXPECT_EQ(arguments.reply ? arguments.reply->exitStatus : kGoesOn, exitStatus) << first;
    if (arguments.reply) continue;
    EXPECT_EQ(arguments.typed, typed) << first;
    EXPECT_EQ(arguments.prefix.value_or(""), prefix) << first;
  }
}

TEST(ChooserFolders, BeginBesideTheBuildProjectAndThenWhereTheyWereLast) {
  ChooserFolders folders;
  EXPECT_EQ(folders.Begin("open", ""), "");
  folders.Remember("open", "/a");
  EXPECT_EQ(folders.Begin("add", ""), "/a") << "nothing is open yet";
  EXPECT_EQ(folders.Begin("add", "/project"), "/project");
  folders.Remember("add", "/b");
  EXPECT_EQ(folders.Begin("add", "/project"), "/b");
  EXPECT_EQ(folders.Begin("open", "/project"), "/project");
  EXPECT_EQ(folders.Begin("add", ""), "/b") << "a new one has no folder yet";
  EXPECT_EQ(folders.Begin("add", "/other"), "/other");
}

TEST(WindowPlace, StaysWhereItCanBeTakenHoldOf) {
  const std::vector<wxRect> screens = {{0, 0, 1920, 1080}, {1920, 0, 1280, 1024}};
  const wxSize smallest(640, 420);
  struct Case {
    wxRect wanted;
    wxRect placed;
  };
  const Case cases[] = {
      {{100, 100, 1100, 740}, {100, 100, 1100, 740}},
      {{2000, 50, 1100, 740}, {2000, 50, 1100, 740}},
      {{-900, 100, 1100, 740}, {-900, 100, 1100, 740}},
      {{-1080, 100, 1100, 740}, {410, 170, 1100, 740}},
      {{5000, 100, 1100, 740}, {410, 170, 1100, 740}},
      {{100, -400, 1100, 740}, {410, 170, 1100, 740}},
      {{9000, 9000, 4000, 3000}, {0, 0, 1920, 1080}},
      {{100, 100, 0, 0}, {100, 100, 640, 420}},
  };
  for (const auto& [wanted, placed] : cases) {
    EXPECT_EQ(OnSomeScreen(wanted, screens, smallest), placed) << wanted.x << "," << wanted.y;
  }
}

TEST(WindowPlace, IsKeptInTwips) {
  const wxRect place(-20, 30, 1100, 740);
  EXPECT_EQ(InTwips(place).width, 16500);
  EXPECT_EQ(InDips(InTwips(place)), place);
  EXPECT_EQ(InDips({0, std::numeric_limits<float>::quiet_NaN(), 1e30F, 15}),
            wxRect(0, 0, 100000, 1));
}

TEST(ColumnWidths, GrowWithTheRoomAndShrinkByTheirWorth) {
  const std::vector<ColumnNeed> needs = {
      {20, 50, 100, 1, true}, {20, 60, 300, 2, true}, {10, 40, 40, 8, false}};
  const std::pair<int, std::vector<int>> cases[] = {
      {1000, {240, 720, 40}}, {440, {100, 300, 40}}, {240, {80, 120, 40}},
      {150, {50, 60, 40}},    {110, {20, 50, 40}},   {30, {20, 20, 10}},
  };
  for (const auto& [room, widths] : cases) EXPECT_EQ(ColumnWidthsFor(room, needs), widths) << room;
}

}  // namespace
}  // namespace gorbex::ui
