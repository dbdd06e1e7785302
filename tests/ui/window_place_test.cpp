#include "ui/window_place.h"

#include <gtest/gtest.h>

#include <limits>

namespace gorbex::ui {
namespace {

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

}  // namespace
}  // namespace gorbex::ui
