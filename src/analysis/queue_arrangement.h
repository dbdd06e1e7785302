#pragma once

#include <cstddef>
#include <functional>
#include <list>
#include <string>
#include <vector>

namespace gorbex {

/// Moves every dependent row directly below its dependency, in rounds. Rows are known by their
/// first position, counted from 0.
///
/// A round first links the rows whose dependency is in the queue. Then it scans the rows from the
/// top: it moves a linked row below its dependency, and the scan goes on after the row's new place.
/// A row that moves up past the scan waits until the scan comes back, or for the next round.
class QueueArrangement {
 public:
  struct Row {
    std::string project;     ///< unique, unless empty
    std::string dependency;  ///< empty for none
    bool linked = false;     ///< left over from an earlier arrangement
  };

  /// Called with a row that is removed from the queue: it waits for a dependency that is not there,
  /// or for itself.
  using RowLost = std::function<void(std::size_t row)>;

  explicit QueueArrangement(const std::vector<Row>& rows);

  /// Goes through as many rounds as there are rows.
  void Run(const RowLost& rowLost);

  /// The rows that remain, in order.
  [[nodiscard]] const std::list<std::size_t>& Order() const { return order_; }
  [[nodiscard]] bool Moved(std::size_t row) const { return moved_[row]; }

  static constexpr std::size_t kNone = static_cast<std::size_t>(-1);

  /// 0 for a row that is not linked; else the 1-based position of its dependency when it was last
  /// linked, which is kNone when only an earlier arrangement did that.
  [[nodiscard]] std::size_t LinkOf(std::size_t row) const { return link_[row]; }

 private:
  void Round(const RowLost& rowLost);

  std::list<std::size_t> order_;
  std::vector<std::list<std::size_t>::iterator> at_;
  std::vector<std::size_t> upper_;  ///< the dependency; kNone when empty or not in the queue
  std::vector<std::size_t> link_;
  std::vector<std::size_t> place_;  ///< where this round's scan meets or met the row
  std::vector<bool> moved_;
};

}  // namespace gorbex
