#include "report/timeline_layout.h"

#include <algorithm>
#include <array>
#include <cstdio>

namespace gorbex {

using std::chrono::milliseconds;

namespace {

constexpr std::array<milliseconds::rep, 22> kSteps = {
    1,       2,       5,       10,        20,        50,       100,    200,
    500,     1'000,   2'000,   5'000,     10'000,    20'000,   30'000, 60'000,
    120'000, 300'000, 600'000, 1'200'000, 1'800'000, 3'600'000};

milliseconds::rep StepOf(milliseconds length, std::size_t most) {
  const auto least =
      length.count() / static_cast<milliseconds::rep>(std::max<std::size_t>(most, 2) - 1);
  const auto step =
      std::lower_bound(kSteps.begin(), kSteps.end(), std::max<milliseconds::rep>(least, 1));
  if (step != kSteps.end()) return *step;
  return (least + kSteps.back() - 1) / kSteps.back() * kSteps.back();
}

std::string TickText(milliseconds::rep time, milliseconds::rep step) {
  char buffer[40];
  if (step < 1000) {
    const int decimals = step < 10 ? 3 : step < 100 ? 2 : 1;
    std::snprintf(buffer, sizeof buffer, "%.*f s", decimals, static_cast<double>(time) / 1000);
  } else if (time < 60'000) {
    std::snprintf(buffer, sizeof buffer, "%d s", static_cast<int>(time / 1000));
  } else {
    std::snprintf(buffer, sizeof buffer, "%lld:%02d", static_cast<long long>(time / 60'000),
                  static_cast<int>(time / 1000 % 60));
  }
  return buffer;
}

}  // namespace

std::vector<TimelineTick> TicksOf(milliseconds length, std::size_t most) {
  const auto step = StepOf(length, most);
  std::vector<TimelineTick> ticks;
  for (milliseconds::rep time = 0; time <= length.count(); time += step) {
    ticks.push_back({milliseconds(time), TickText(time, step)});
  }
  return ticks;
}

int TimelineLayout::Height() const {
  return static_cast<int>(timeline_.places) * (sizes_.lane + sizes_.gap);
}

int TimelineLayout::X(milliseconds time) const {
  const auto length = std::max<milliseconds::rep>(timeline_.length.count(), 1);
  return static_cast<int>(time.count() * sizes_.width / length);
}

TimelineLayout::Box TimelineLayout::BoxOf(const TimelineBar& bar) const {
  const int x = std::min(X(bar.start), std::max(0, sizes_.width - sizes_.least));
  const int y = static_cast<int>(bar.place - 1) * (sizes_.lane + sizes_.gap);
  return {x, y, std::max(sizes_.least, X(bar.end) - x), sizes_.lane};
}

std::optional<std::size_t> TimelineLayout::BarAt(int x, int y) const {
  for (std::size_t i = timeline_.bars.size(); i-- > 0;) {
    const Box box = BoxOf(timeline_.bars[i]);
    const bool isIn = x >= box.x && x < box.x + box.width && y >= box.y && y < box.y + box.height;
    if (isIn) return i;
  }
  return std::nullopt;
}

}  // namespace gorbex
