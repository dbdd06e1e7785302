#pragma once

#include <chrono>
#include <cstddef>
#include <optional>
#include <string>
#include <vector>

#include "build/run_timeline.h"

namespace gorbex {

/// A moment that a timeline names on its axis.
struct TimelineTick {
  std::chrono::milliseconds time{0};
  std::string text;  ///< such as "20 s"
};

/// At most `most` moments at round intervals, including the start.
[[nodiscard]] std::vector<TimelineTick> TicksOf(std::chrono::milliseconds length, std::size_t most);

/// The places of a timeline's bars, in the pixels of the drawing: a lane for each place of a
/// compiler, the first at the top.
class TimelineLayout {
 public:
  struct Sizes {
    int width = 0;  ///< of the whole run
    int lane = 0;   ///< the height of a bar
    int gap = 0;    ///< between two lanes
    int least = 1;  ///< the width of the shortest bar
  };
  struct Box {
    int x = 0;
    int y = 0;
    int width = 0;
    int height = 0;
  };

  TimelineLayout(const RunTimeline& timeline, const Sizes& sizes)
      : timeline_(timeline), sizes_(sizes) {}

  [[nodiscard]] int Height() const;
  [[nodiscard]] int X(std::chrono::milliseconds time) const;
  [[nodiscard]] Box BoxOf(const TimelineBar& bar) const;

  /// The bar at a point; nothing where there is none. Of several bars at the point, the last drawn.
  [[nodiscard]] std::optional<std::size_t> BarAt(int x, int y) const;

 private:
  const RunTimeline& timeline_;
  Sizes sizes_;
};

}  // namespace gorbex
