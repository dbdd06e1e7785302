#pragma once

#include <cstddef>
#include <cstdint>
#include <functional>
#include <string_view>
#include <unordered_map>
#include <vector>

namespace gorbex {

/// The order that rounds of moving every dependent row directly below its dependency lead to. Rows
/// are known by their first position, counted from 0.
///
/// One round scans the rows from the top. A linked row is taken out and put back below the row it
/// depends on, and the scan goes on behind its new place, so rows that shifted up past it wait for
/// the next round; in one round a row moves once at most. Rows that wait keep their order, which is
/// all the scan needs: the next row to move is the first waiting one behind a place, and a
/// union-find over the places answers that in nearly constant time. Since a round depends on
/// nothing but order and links, an order that comes back proves that the rounds repeat themselves,
/// and whole repetitions are left out.
class QueueArrangement {
 public:
  struct Row {
    std::string_view project;     ///< unique, unless empty
    std::string_view dependency;  ///< empty for none
    bool linked = false;          ///< left over from an earlier arrangement
  };

  /// Called when a linked row was taken out whose dependency is not in the queue: the row is lost.
  /// True goes on, false ends the arrangement.
  using RowLost = std::function<bool(std::size_t row)>;

  explicit QueueArrangement(const std::vector<Row>& rows);

  /// Goes through the rounds; false when the caller ended it.
  bool Run(std::size_t rounds, const RowLost& rowLost);

  /// The rows that remain, in order.
  [[nodiscard]] const std::vector<std::size_t>& Order() const { return order_; }
  [[nodiscard]] bool Moved(std::size_t row) const { return moved_[row]; }

  /// True while a row waits to be moved.
  [[nodiscard]] bool Linked(std::size_t row) const { return linked_[row]; }

  /// The 1-based position of the dependency when a linked row was last linked; 0 for a row not
  /// linked, or linked by an earlier arrangement alone.
  [[nodiscard]] std::size_t LinkOf(std::size_t row) const;

 private:
  static constexpr std::size_t kNone = static_cast<std::size_t>(-1);

  void Link();
  bool MoveLinked(const RowLost& rowLost);
  bool Move(std::size_t row, std::size_t& place, const RowLost& rowLost);
  void BeginPhase();
  void EndPhase();
  [[nodiscard]] std::size_t NextWaiting(std::size_t place);
  void TakeOut(std::size_t row);
  void PutBelow(std::size_t row, std::size_t upper);

  std::vector<std::size_t> order_;
  std::vector<std::size_t> dependency_;  ///< kNone when empty or not in the queue
  std::vector<bool> present_;
  std::vector<bool> linked_;
  std::vector<bool> moved_;
  std::vector<std::size_t> link_;

  // Of one phase: a ring list over the rows with its head at position size(), and each row's place,
  // its position at the start of the phase or that of the waiting row it was put behind.
  std::vector<std::size_t> next_;
  std::vector<std::size_t> previous_;
  std::vector<std::size_t> place_;
  std::vector<std::size_t> waiting_;  ///< union-find: a place, or a later one with a waiting row
  std::size_t count_ = 0;
};

}  // namespace gorbex
