#pragma once

#include <atomic>
#include <chrono>
#include <functional>
#include <mutex>

#include "platform/event_pump.h"

namespace gorbex {

/// Limits how long a piece of work waits. It ends the wait when nothing came in for too long, when
/// the whole work took too long, or when nobody wants the result any more.
class Patience {
 public:
  explicit Patience(std::chrono::milliseconds longestSilence) : longestSilence_(longestSilence) {}

  [[nodiscard]] bool IsOver() const;

  /// Something came in.
  void Renew() { newest_ = Clock::now(); }

  /// Tells the work that nobody needs its result any more.
  void End() { isEnded_ = true; }

 private:
  using Clock = std::chrono::steady_clock;
  static_assert(std::atomic<Clock::time_point>::is_always_lock_free);

  std::chrono::milliseconds longestSilence_;
  Clock::time_point start_ = Clock::now();
  std::atomic<Clock::time_point> newest_ = start_;
  std::atomic<bool> isEnded_ = false;
};

/// Does work that may block on a separate thread, while the user interface of the caller stays
/// alive.
class Worker : public EventHandler {
 public:
  explicit Worker(std::chrono::milliseconds longestSilence) : longestSilence_(longestSilence) {}

  /// Returns when the work is done; what it throws is thrown here as a RuntimeError. Work that an
  /// event asks for meanwhile is done after it.
  void Do(const std::function<void(Patience&)>& work);

 private:
  std::chrono::milliseconds longestSilence_;
  std::mutex turn_;
};

}  // namespace gorbex
