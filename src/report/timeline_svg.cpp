#include "report/timeline_svg.h"

#include <algorithm>
#include <chrono>
#include <cstdio>

#include "core/file_tools.h"
#include "platform/plain_text.h"
#include "report/run_words.h"
#include "report/timeline_layout.h"

namespace gorbex {

using std::chrono::milliseconds;

namespace {

// In pixels; along the time axis everything is a share of the width.
constexpr int kAxis = 24;
constexpr int kLabel = 16;
constexpr int kBar = 22;
constexpr int kUnderline = 4;
constexpr int kLane = kLabel + kBar + 2 + kUnderline + 8;
constexpr double kLeastShare = 0.4;

std::string Percent(double share) {
  char buffer[40];
  std::snprintf(buffer, sizeof buffer, "%.2f%%", share);
  return buffer;
}

double ShareOf(milliseconds time, milliseconds length) {
  return 100.0 * static_cast<double>(time.count()) /
         static_cast<double>(std::max<milliseconds::rep>(length.count(), 1));
}

std::string Number(int number) {
  return std::to_string(number);
}

std::string Axis(const RunTimeline& timeline, int height) {
  constexpr std::size_t kMost = 5;
  std::string svg = "<g class=\"axis\">\n";
  for (const TimelineTick& tick : TicksOf(timeline.length, kMost)) {
    const double share = ShareOf(tick.time, timeline.length);
    const char* anchor = share < 5 ? "start" : share > 90 ? "end" : "middle";
    const std::string x = Percent(share);
    svg.append("<line x1=\"").append(x).append("\" x2=\"").append(x).append("\" y1=\"");
    svg.append(Number(kAxis - 6)).append("\" y2=\"").append(Number(height));
    svg.append("\"/><text x=\"").append(x).append("\" y=\"12\" text-anchor=\"").append(anchor);
    svg.append("\">").append(tick.text).append("</text>\n");
  }
  return svg + "</g>\n";
}

std::string Bar(const RunRecord& record, const RunTimeline& timeline, const TimelineBar& bar) {
  const RunRecord::Project& project = record.Projects()[bar.project];
  const double width = std::max(kLeastShare, ShareOf(bar.Duration(), timeline.length));
  const double x = std::min(ShareOf(bar.start, timeline.length), 100 - width);
  const int y = kAxis + static_cast<int>(bar.place - 1) * kLane + kLabel;
  std::string svg = "<svg class=\"" + ClassOf(ResultOf(record, project)) + "\" x=\"" + Percent(x) +
                    "\" y=\"" + Number(y) + "\" width=\"" + Percent(width) + "\" height=\"" +
                    Number(kBar) + "\"><title>" + MarkupText(BarText(record, bar)) +
                    "</title><rect width=\"100%\" height=\"100%\"/>";
  svg += "<text x=\"5\" y=\"15\">" + MarkupText(GetFileFromPath(project.path)) + "</text></svg>\n";
  if (!bar.isCritical) return svg;
  return svg + "<rect class=\"critical\" x=\"" + Percent(x) + "\" y=\"" + Number(y + kBar + 2) +
         "\" width=\"" + Percent(width) + "\" height=\"" + Number(kUnderline) + "\"/>\n";
}

}  // namespace

std::string ClassOf(ProjectResult result) {
  std::string name(NameOf(result));
  std::replace(name.begin(), name.end(), ' ', '-');
  return name;
}

std::string TimelineSvg(const RunRecord& record, const RunTimeline& timeline) {
  const int height = kAxis + static_cast<int>(timeline.places) * kLane;
  std::string svg =
      "<svg class=\"timeline\" role=\"img\" aria-labelledby=\"timeline-title timeline-words\" "
      "width=\"100%\" "
      "height=\"" +
      Number(height) +
      "\">\n<title id=\"timeline-title\">Timeline of the run</title>\n"
      "<desc id=\"timeline-words\">A bar for each project that has begun, on a lane for each "
      "place, "
      "from left to right in " +
      TimeText(timeline.length) +
      ". Bars of the critical path are underlined. The table below says the same.</desc>\n";
  svg += Axis(timeline, height);
  for (std::size_t place = 1; place <= timeline.places; ++place) {
    svg += "<text class=\"lane\" x=\"2\" y=\"" +
           Number(kAxis + static_cast<int>(place - 1) * kLane + kLabel - 4) + "\">Place " +
           std::to_string(place) + "</text>\n";
  }
  for (const TimelineBar& bar : timeline.bars) svg += Bar(record, timeline, bar);
  return svg + "</svg>\n";
}

}  // namespace gorbex
