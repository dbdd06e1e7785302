#include "build/run_timeline.h"

#include <algorithm>
#include <functional>
#include <numeric>
#include <unordered_map>

namespace gorbex {

using std::chrono::milliseconds;

namespace {

constexpr std::size_t kNone = static_cast<std::size_t>(-1);

using Uses = std::vector<std::vector<std::size_t>>;

// A project that has begun and has no result yet is being built, or was when the run ended.
TimelineBar BarOf(const RunRecord::Project& project, std::size_t number, milliseconds length) {
  const bool isOpen = project.outcome == RunRecord::Outcome::NotBuilt;
  const milliseconds end =
      isOpen ? std::max(project.start, length) : project.start + project.duration;
  return {number, project.place, project.start, end};
}

std::vector<TimelineBar> BarsOf(const RunRecord& record, milliseconds length) {
  std::vector<TimelineBar> bars;
  const auto& projects = record.Projects();
  for (std::size_t i = 0; i < projects.size(); ++i) {
    if (projects[i].HasBegun()) bars.push_back(BarOf(projects[i], i, length));
  }
  std::ranges::stable_sort(bars, {}, &TimelineBar::start);
  return bars;
}

/// Finds what each bar waited for.
class Waits {
 public:
  Waits(const std::vector<TimelineBar>& bars, const Uses& uses) : bars_(bars), uses_(uses) {
    std::unordered_map<std::size_t, std::size_t> last;
    for (std::size_t i = 0; i < bars.size(); ++i) {
      numbers_.emplace(bars[i].project, i);
      const auto [before, isFirst] = last.try_emplace(bars[i].place, i);
      onPlace_.push_back(isFirst ? kNone : before->second);
      before->second = i;
    }
  }

  /// The bar that this one waited for; kNone for one that could begin at once.
  [[nodiscard]] std::size_t Of(std::size_t bar) const {
    std::size_t latest = kNone;
    const std::size_t project = bars_[bar].project;
    if (project < uses_.size()) {
      for (const std::size_t used : uses_[project]) {
        const auto found = numbers_.find(used);
        if (found != numbers_.end()) Take(latest, found->second, bar);
      }
    }
    if (onPlace_[bar] != kNone) Take(latest, onPlace_[bar], bar);
    return latest;
  }

 private:
  // A bar that began later is of a circle and was not waited for.
  void Take(std::size_t& latest, std::size_t other, std::size_t bar) const {
    if (other >= bar) return;
    if (latest == kNone || bars_[other].end > bars_[latest].end) latest = other;
  }

  const std::vector<TimelineBar>& bars_;
  const Uses& uses_;
  std::unordered_map<std::size_t, std::size_t> numbers_;  ///< of bars, by project
  std::vector<std::size_t> onPlace_;                      ///< the bar before on the same lane
};

// No run waits for a project that was up to date.
std::vector<std::size_t> CriticalPathOf(const RunRecord& record,
                                        const std::vector<TimelineBar>& bars, const Uses& uses) {
  std::vector<std::size_t> path;
  if (bars.empty()) return path;
  const Waits waits(bars, uses);
  std::size_t bar = 0;
  for (std::size_t i = 1; i < bars.size(); ++i) {
    if (bars[i].end >= bars[bar].end) bar = i;
  }
  for (; bar != kNone; bar = waits.Of(bar)) path.push_back(bar);
  std::erase_if(path, [&](std::size_t each) {
    return record.Projects()[bars[each].project].outcome == RunRecord::Outcome::UpToDate;
  });
  std::reverse(path.begin(), path.end());
  return path;
}

}  // namespace

std::vector<std::size_t> RunTimeline::Slowest() const {
  std::vector<std::size_t> slowest(bars.size());
  std::iota(slowest.begin(), slowest.end(), 0);
  const auto duration = [this](std::size_t bar) { return bars[bar].Duration(); };
  std::ranges::stable_sort(slowest, std::ranges::greater(), duration);
  std::erase_if(slowest, [&](std::size_t bar) { return duration(bar) == milliseconds(0); });
  return slowest;
}

RunTimeline TimelineOf(const RunRecord& record, const Uses& uses, milliseconds length) {
  RunTimeline timeline;
  timeline.bars = BarsOf(record, length);
  timeline.criticalPath = CriticalPathOf(record, timeline.bars, uses);
  for (const std::size_t bar : timeline.criticalPath) timeline.bars[bar].isCritical = true;
  // A message that tells the result may be open long after the last project is done.
  const bool isOver = record.HasEnded() && !timeline.bars.empty();
  timeline.length = isOver ? milliseconds(0) : length;
  timeline.barOf.resize(record.Projects().size());
  for (std::size_t i = 0; i < timeline.bars.size(); ++i) {
    timeline.barOf[timeline.bars[i].project] = i;
  }
  for (const TimelineBar& bar : timeline.bars) {
    timeline.places = std::max(timeline.places, bar.place);
    timeline.length = std::max(timeline.length, bar.end);
  }
  return timeline;
}

}  // namespace gorbex
