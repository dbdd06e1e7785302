#include "analysis/queue_arrangement.h"

#include <utility>

namespace gorbex {

QueueArrangement::QueueArrangement(const std::vector<Row>& rows)
    : dependency_(rows.size(), kNone),
      present_(rows.size(), true),
      linked_(rows.size()),
      moved_(rows.size(), false),
      link_(rows.size(), 0),
      next_(rows.size() + 1),
      previous_(rows.size() + 1),
      place_(rows.size() + 1),
      waiting_(rows.size() + 1),
      count_(rows.size()) {
  std::unordered_map<std::string_view, std::size_t> byProject;
  for (std::size_t i = 0; i < rows.size(); ++i) {
    order_.push_back(i);
    linked_[i] = rows[i].linked;
    if (!rows[i].project.empty()) byProject.emplace(rows[i].project, i);
  }
  for (std::size_t i = 0; i < rows.size(); ++i) {
    if (rows[i].dependency.empty()) continue;
    const auto found = byProject.find(rows[i].dependency);
    if (found != byProject.end()) dependency_[i] = found->second;
  }
}

bool QueueArrangement::Run(std::size_t rounds, const RowLost& rowLost) {
  auto remembered = std::make_pair(order_, linked_);
  std::size_t rememberedAt = 0;
  std::size_t span = 1;
  for (std::size_t round = 1; round <= rounds; ++round) {
    Link();
    if (!MoveLinked(rowLost)) return false;
    const std::size_t period = round - rememberedAt;
    if (order_ == remembered.first && linked_ == remembered.second) {
      rounds = round + (rounds - round) % period;
    } else if (period == span) {
      remembered = {order_, linked_};
      rememberedAt = round;
      span *= 2;
    }
  }
  return true;
}

std::size_t QueueArrangement::LinkOf(std::size_t row) const {
  return linked_[row] ? link_[row] : 0;
}

void QueueArrangement::Link() {
  BeginPhase();
  for (const std::size_t row : order_) {
    const std::size_t upper = dependency_[row];
    if (upper == kNone || !present_[upper]) continue;
    linked_[row] = true;
    link_[row] = place_[upper] + 1;
  }
}

void QueueArrangement::BeginPhase() {
  std::size_t before = present_.size();
  for (std::size_t i = 0; i < order_.size(); ++i) {
    const std::size_t row = order_[i];
    place_[row] = i;
    next_[before] = row;
    previous_[row] = before;
    before = row;
  }
  next_[before] = present_.size();
  previous_[present_.size()] = before;
}

void QueueArrangement::EndPhase() {
  order_.clear();
  for (auto row = next_[present_.size()]; row != present_.size(); row = next_[row]) {
    order_.push_back(row);
  }
}

std::size_t QueueArrangement::NextWaiting(std::size_t place) {
  std::size_t root = place;
  while (waiting_[root] != root) root = waiting_[root];
  while (waiting_[place] != root) place = std::exchange(waiting_[place], root);
  return root;
}

bool QueueArrangement::MoveLinked(const RowLost& rowLost) {
  const std::vector<std::size_t> rows = order_;
  for (std::size_t i = 0; i < rows.size(); ++i) waiting_[i] = linked_[rows[i]] ? i : i + 1;
  waiting_[rows.size()] = rows.size();
  bool goOn = true;
  for (auto place = NextWaiting(0); goOn && place < rows.size(); place = NextWaiting(place)) {
    const std::size_t row = rows[place];
    waiting_[place] = place + 1;
    goOn = Move(row, place, rowLost);
  }
  EndPhase();
  return goOn;
}

// Moves a row that waits at a place, and makes it the place behind which the scan goes on.
bool QueueArrangement::Move(std::size_t row, std::size_t& place, const RowLost& rowLost) {
  const std::size_t below = next_[row];
  TakeOut(row);
  linked_[row] = false;
  std::size_t upper = dependency_[row];
  const bool append = count_ < 3;
  if (!append && (upper == kNone || !present_[upper] || upper == row)) {
    present_[row] = false;
    --count_;
    EndPhase();
    // The scan goes on behind the row that took the lost one's position.
    place = below == present_.size() ? below : place_[below] + 1;
    return rowLost(row);
  }
  if (append) upper = previous_[present_.size()];
  PutBelow(row, upper);
  moved_[row] = true;
  place = append ? present_.size() : place_[upper];
  place_[row] = place;
  if (place < present_.size()) ++place;
  return true;
}

void QueueArrangement::TakeOut(std::size_t row) {
  next_[previous_[row]] = next_[row];
  previous_[next_[row]] = previous_[row];
}

void QueueArrangement::PutBelow(std::size_t row, std::size_t upper) {
  const std::size_t below = next_[upper];
  next_[upper] = row;
  previous_[row] = upper;
  next_[row] = below;
  previous_[below] = row;
}

}  // namespace gorbex
