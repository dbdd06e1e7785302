#include "analysis/queue_arrangement.h"

#include <algorithm>
#include <bit>
#include <string_view>
#include <unordered_map>
#include <utility>

namespace gorbex {

QueueArrangement::QueueArrangement(const std::vector<Row>& rows)
    : upper_(rows.size(), kNone), place_(rows.size()), moved_(rows.size()) {
  std::unordered_map<std::string_view, std::size_t> byProject;
  for (const Row& row : rows) {
    const std::size_t number = at_.size();
    at_.push_back(order_.insert(order_.end(), number));
    link_.push_back(row.linked ? kNone : 0);
    if (!row.project.empty()) byProject.emplace(row.project, number);
  }
  for (std::size_t i = 0; i < rows.size(); ++i) {
    const auto found = byProject.find(rows[i].dependency);
    if (found != byProject.end()) upper_[i] = found->second;
  }
}

// A round depends on nothing but order and links. So when a state comes back, the rounds repeat
// themselves, and whole repetitions are left out.
void QueueArrangement::Run(const RowLost& rowLost) {
  auto known = std::pair(order_, link_);
  std::size_t knownAt = 0;
  for (std::size_t round = 1, last = link_.size(); round <= last; ++round) {
    Round(rowLost);
    if (known.first == order_ && known.second == link_) {
      last = round + (last - round) % (round - knownAt);
    } else if (std::has_single_bit(round)) {
      known = {order_, link_};
      knownAt = round;
    }
  }
}

// Rows that wait keep their order, so the scan needs only the places that they had at the start of
// the round: a moved row takes over the place of the row above it.
void QueueArrangement::Round(const RowLost& rowLost) {
  const std::vector<std::size_t> rows(order_.begin(), order_.end());
  for (std::size_t i = 0; i < rows.size(); ++i) place_[rows[i]] = i;
  std::string waiting;
  for (const std::size_t row : rows) {
    if (upper_[row] != kNone) link_[row] = place_[upper_[row]] + 1;
    waiting += link_[row] == 0 ? ' ' : '*';
  }
  for (auto i = waiting.find('*'); i != std::string::npos; i = waiting.find('*', i + 1)) {
    const std::size_t row = rows[i];
    const std::size_t upper = upper_[row];
    waiting[i] = ' ';
    link_[row] = 0;
    const bool append = order_.size() < 3;
    if (append || (upper != kNone && upper != row)) {
      order_.splice(append ? order_.end() : std::next(at_[upper]), order_, at_[row]);
      moved_[row] = true;
      if (append) return;
      i = place_[row] = place_[upper];
    } else {
      const auto below = order_.erase(at_[row]);
      std::replace(upper_.begin(), upper_.end(), row, kNone);
      rowLost(row);
      if (below == order_.end()) return;
      i = place_[*below];  // the row that took the lost one's position is skipped
    }
  }
}

}  // namespace gorbex
