#include "build/time_left.h"

namespace gorbex {

using std::chrono::milliseconds;

TimeLeft::TimeLeft(const Durations& last) {
  milliseconds sum{0};
  milliseconds::rep known = 0;
  for (const auto& duration : last) {
    if (!duration) continue;
    sum += *duration;
    ++known;
  }
  if (known == 0) return;
  left_.resize(last.size());
  milliseconds rest{0};
  for (std::size_t i = last.size(); i > 0; --i) {
    const milliseconds present = last[i - 1].value_or(sum / known);
    rest += present;
    left_[i - 1] = {rest, present};
  }
}

std::optional<TimeEstimate> TimeLeft::From(std::size_t number) const {
  if (number == 0 || number > left_.size()) return std::nullopt;
  return left_[number - 1];
}

}  // namespace gorbex
