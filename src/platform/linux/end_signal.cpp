#include "platform/linux/end_signal.h"

#include <fcntl.h>
#include <poll.h>
#include <unistd.h>

#include <array>
#include <atomic>
#include <csignal>

namespace gorbex {
namespace {

// A signal handler reaches nothing but globals. The pipe wakes a wait without a race.
std::atomic<bool> wanted{false};
std::array<int, 2> wakening{-1, -1};

void Note(int /*signal*/) {
  wanted = true;
  const char byte = 0;
  static_cast<void>(!write(wakening[1], &byte, 1));
}

}  // namespace

void EndSignal::Listen() {
  if (wakening[0] < 0 && pipe2(wakening.data(), O_CLOEXEC | O_NONBLOCK) != 0) return;
  struct sigaction action {};
  action.sa_handler = Note;
  action.sa_flags = SA_RESTART | static_cast<int>(SA_RESETHAND);
  for (const int signal : {SIGTERM, SIGINT, SIGHUP}) sigaction(signal, &action, nullptr);
}

bool EndSignal::Wanted() {
  return wanted;
}

void EndSignal::Wait(std::chrono::milliseconds time) {
  using Clock = std::chrono::steady_clock;
  const auto end = Clock::now() + time;
  pollfd waking{wakening[0], POLLIN, 0};
  for (auto left = time; left.count() > 0 && !wanted;) {
    static_cast<void>(poll(&waking, 1, static_cast<int>(left.count())));
    left = std::chrono::duration_cast<std::chrono::milliseconds>(end - Clock::now());
  }
}

}  // namespace gorbex
