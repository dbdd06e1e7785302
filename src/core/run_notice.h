#pragma once

#include <chrono>
#include <cstddef>
#include <functional>
#include <optional>
#include <string>

#include "core/run_events.h"
#include "core/signal.h"
#include "platform/clock.h"

namespace gorbex {

/// Tells a user who works in another program of a run: at its end, or when it waits for an answer,
/// if the run has taken longer than ten seconds.
class RunNotice {
 public:
  RunNotice(RunEvents& events, const Clock& clock);

  /// Whether the user looks at the program. Without it nobody is told.
  std::function<bool()> isInFront;

  /// The result as the status bar has it, or the question.
  Signal<std::string> due;

 private:
  void Hear(const RunEvent& event);
  void Tell(const std::string& text);

  const Clock& clock_;
  std::chrono::milliseconds start_{0};
  std::size_t checked_ = 0;      ///< projects of the run; 0 when none runs
  std::optional<RunEnded> end_;  ///< nothing until every project is passed
  bool isTold_ = false;          ///< of what the run does now
  Subscription subscription_;
};

}  // namespace gorbex
