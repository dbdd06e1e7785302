#pragma once

#include <chrono>

#include "platform/clock.h"

namespace gorbex {

/// Adds up the time in which at least one question waits for its answer.
class QuestionTime {
 public:
  explicit QuestionTime(const Clock& clock) : clock_(clock) {}

  void Asked() {
    if (open_++ == 0) since_ = clock_.Elapsed();
  }
  void Answered() {
    if (--open_ == 0) total_ += clock_.Elapsed() - since_;
  }

  /// The time so far, without questions that are still open.
  [[nodiscard]] std::chrono::milliseconds Total() const { return total_; }

 private:
  const Clock& clock_;
  int open_ = 0;
  std::chrono::milliseconds since_{0};
  std::chrono::milliseconds total_{0};
};

}  // namespace gorbex
