#pragma once

#include <chrono>
#include <functional>
#include <future>
#include <memory>
#include <optional>
#include <thread>
#include <utility>

#include "platform/event_pump.h"
#include "platform/windows/com_apartment.h"
#include "platform/windows/dispatch.h"
#include "platform/windows/handle.h"

namespace gorbex {

/// An object that lives on an automation thread. Anybody may hold it; only work of that thread uses
/// it.
using KeptObject = std::shared_ptr<const Dispatch>;

/// A thread on which automation objects live, so that a server that takes its time does not stop
/// the caller's user interface: events are handled while its work is waited for.
class AutomationThread {
 public:
  /// Work is waited for as long as said, or forever. The pump, which may be null, outlives this
  /// object.
  explicit AutomationThread(EventPump* events,
                            std::optional<std::chrono::milliseconds> patience = {});

  /// Ends the thread when its work is done. A thread that does not answer keeps running.
  ~AutomationThread();
  AutomationThread(const AutomationThread&) = delete;
  AutomationThread& operator=(const AutomationThread&) = delete;

  /// Does the work on the thread and gives its result, or throws what it threw; what an event threw
  /// meanwhile is thrown when the work is done. The work owns all it uses: error 440 when the wait
  /// is over, and the work may then go on by itself.
  template <class Work>
  auto Do(Work work) -> decltype(work()) {
    const auto task = std::make_shared<std::packaged_task<decltype(work())()>>(std::move(work));
    auto result = task->get_future();
    Await([task] { (*task)(); });
    return result.get();
  }

  /// For objects that leave the work they were made by: the last owner gives them back to the
  /// thread.
  [[nodiscard]] static KeptObject Keep(Dispatch object);

 private:
  struct Queue;
  struct Job;

  void Await(std::function<void()> work);
  void HandleEvents(std::exception_ptr& thrown);

  ComApartment apartment_;  // servers may call back into the caller's thread
  EventPump* events_;
  std::chrono::steady_clock::time_point lastEvents_;
  std::optional<std::chrono::milliseconds> patience_;
  std::shared_ptr<Queue> queue_;
  std::thread thread_;
};

}  // namespace gorbex
