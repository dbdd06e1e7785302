#include "platform/windows/automation_thread.h"

#include <windows.h>

#include <objbase.h>

#include <deque>
#include <exception>
#include <mutex>

#include "platform/runtime_error.h"

namespace gorbex {
namespace {

using namespace std::chrono_literals;
using std::chrono::steady_clock;

constexpr auto kBetweenEvents = 20ms;

Handle Event() {
  return Handle(CreateEventW(nullptr, FALSE, FALSE, nullptr));
}

// Calls to the apartment's objects are among the thread's messages.
void HandleMessages() {
  MSG message{};
  while (PeekMessageW(&message, nullptr, 0, 0, PM_REMOVE) != 0) {
    TranslateMessage(&message);
    DispatchMessageW(&message);
  }
}

// True when it is signalled within the time. Calls into this thread's objects go on meanwhile.
bool WaitFor(const Handle& event, std::chrono::milliseconds time) {
  HANDLE handle = event.Get();
  const auto milliseconds = static_cast<DWORD>(time.count());
  DWORD which = 0;
  const HRESULT waited = CoWaitForMultipleHandles(0, milliseconds, 1, &handle, &which);
  if (waited == S_OK) return true;
  return waited != RPC_S_CALLPENDING && WaitForSingleObject(handle, milliseconds) == WAIT_OBJECT_0;
}

}  // namespace

struct AutomationThread::Job {
  std::function<void()> work;
  Handle done = Event();
};

struct AutomationThread::Queue {
  std::mutex mutex;
  std::deque<std::shared_ptr<Job>> jobs;
  bool ends = false;
  Handle news = Event();
  Handle ended = Event();

  void Put(std::shared_ptr<Job> job) {
    const std::lock_guard lock(mutex);
    jobs.push_back(std::move(job));
    SetEvent(news.Get());
  }
  void End() {
    const std::lock_guard lock(mutex);
    ends = true;
    SetEvent(news.Get());
  }
  /// Drops jobs that have not started.
  void TakeBack(const std::shared_ptr<Job>& job) {
    const std::lock_guard lock(mutex);
    std::erase(jobs, job);
  }
  std::shared_ptr<Job> Next() {
    const std::lock_guard lock(mutex);
    if (jobs.empty()) return nullptr;
    auto job = std::move(jobs.front());
    jobs.pop_front();
    return job;
  }
  bool Ends() {
    const std::lock_guard lock(mutex);
    return ends && jobs.empty();
  }

  void Run();

  static thread_local std::weak_ptr<Queue> own;
};

thread_local std::weak_ptr<AutomationThread::Queue> AutomationThread::Queue::own;

void AutomationThread::Queue::Run() {
  const ComApartment apartment;
  const HANDLE handle = news.Get();
  while (!Ends()) {
    while (const auto job = Next()) {
      job->work();
      job->work = nullptr;
      SetEvent(job->done.Get());
    }
    if (Ends()) break;
    MsgWaitForMultipleObjects(1, &handle, FALSE, INFINITE, QS_ALLINPUT);
    HandleMessages();
  }
}

AutomationThread::AutomationThread(EventPump* events,
                                   std::optional<std::chrono::milliseconds> patience)
    : events_(events),
      lastEvents_(steady_clock::now()),
      patience_(patience),
      queue_(std::make_shared<Queue>()),
      thread_([queue = queue_] {
        Queue::own = queue;
        queue->Run();
        SetEvent(queue->ended.Get());
      }) {}

AutomationThread::~AutomationThread() {
  constexpr auto kLongestEnd = 5s;
  queue_->End();
  if (WaitFor(queue_->ended, kLongestEnd)) {
    thread_.join();
  } else {
    thread_.detach();
  }
}

void AutomationThread::Await(std::function<void()> work) {
  const auto job = std::make_shared<Job>();
  job->work = std::move(work);
  const auto start = steady_clock::now();
  queue_->Put(job);
  std::exception_ptr thrown;
  while (!WaitFor(job->done, kBetweenEvents)) {
    HandleEvents(thrown);
    if (!patience_ || steady_clock::now() - start < *patience_) continue;
    queue_->TakeBack(job);
    throw RuntimeError::WithDescription(ErrorNumber::AutomationError,
                                        "The server does not answer in time");
  }
  HandleEvents(thrown);
  if (thrown) std::rethrow_exception(thrown);
}

void AutomationThread::HandleEvents(std::exception_ptr& thrown) {
  if (events_ == nullptr || steady_clock::now() - lastEvents_ < kBetweenEvents) return;
  try {
    events_->DoEvents();
  } catch (...) {
    if (!thrown) thrown = std::current_exception();
  }
  lastEvents_ = steady_clock::now();
}

KeptObject AutomationThread::Keep(Dispatch object) {
  const auto giveBack = [home = Queue::own](const Dispatch* kept) {
    const auto queue = home.lock();
    if (!queue) return;  // the thread has ended and has released its objects
    auto release = std::make_shared<Job>();
    release->work = [kept] { delete kept; };
    queue->Put(std::move(release));
  };
  return {new Dispatch(std::move(object)), giveBack};
}

}  // namespace gorbex
