#include "platform/linux/mail/worker.h"

#include <future>
#include <memory>
#include <thread>
#include <utility>

#include "platform/runtime_error.h"

namespace gorbex {
namespace {

using namespace std::chrono_literals;

constexpr auto kLongestWork = 10min;
constexpr auto kBetweenEvents = 20ms;

}  // namespace

bool Patience::IsOver() const {
  const auto now = Clock::now();
  return isEnded_ || now - newest_.load() > longestSilence_ || now - start_ > kLongestWork;
}

void Worker::Do(const std::function<void(Patience&)>& work) {
  Patience patience(longestSilence_);
  std::packaged_task<void()> task([&] {
    const std::lock_guard turn(turn_);
    patience.Renew();
    work(patience);
  });
  auto done = task.get_future();
  std::thread thread(std::move(task));
  {
    // Leaves no thread running, whatever an event throws.
    const std::shared_ptr<void> guard(nullptr, [&](void*) {
      patience.End();
      thread.join();
    });
    while (done.wait_for(kBetweenEvents) != std::future_status::ready) {
      if (events_ != nullptr) events_->DoEvents();
    }
  }
  try {
    done.get();
  } catch (const RuntimeError&) {
    throw;
  } catch (const std::exception& error) {
    throw RuntimeError::WithDescription(ErrorNumber::AutomationError, error.what());
  }
}

}  // namespace gorbex
