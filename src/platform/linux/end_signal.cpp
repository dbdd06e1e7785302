#include "platform/linux/end_signal.h"

#include <fcntl.h>
#include <poll.h>
#include <unistd.h>

#include <array>
#include <atomic>
#include <csignal>

#include "platform/linux/child_process.h"

namespace gorbex {
namespace {

// A signal handler reaches nothing but globals. The pipe wakes a wait without a race.
std::atomic<bool> endWanted{false};
std::array<int, 2> wakening{-1, -1};

constexpr std::array kSignals{SIGTERM, SIGINT, SIGHUP};

// The system's own way to end the program comes back as soon as the handler is at work.
void End(int signal) {
  ChildProcess::TerminateAll();
  static_cast<void>(raise(signal));
}

void Handle(int signal, void (*handler)(int)) {
  struct sigaction action {};
  action.sa_handler = handler;
  action.sa_flags = SA_RESTART | static_cast<int>(SA_RESETHAND);
  sigaction(signal, &action, nullptr);
}

bool IsIgnored(int signal) {
  struct sigaction action {};
  return sigaction(signal, nullptr, &action) == 0 && action.sa_handler == SIG_IGN;
}

void Note(int /*signal*/) {
  EndSignal::Obey();
  endWanted = true;
  const char byte = 0;
  static_cast<void>(!write(wakening[1], &byte, 1));
}

}  // namespace

// The starter of the program may have switched a signal off.
void EndSignal::Obey() {
  for (const int signal : kSignals) {
    if (!IsIgnored(signal)) Handle(signal, End);
  }
}

int EndSignal::Listen() {
  if (wakening[0] < 0 && pipe2(wakening.data(), O_CLOEXEC | O_NONBLOCK) != 0) return -1;
  std::array<char, 16> earlier{};
  while (read(wakening[0], earlier.data(), earlier.size()) > 0) continue;
  endWanted = false;
  for (const int signal : kSignals) {
    // Nohup means it; a script ignores the others for all that it starts in the background.
    if (signal != SIGHUP || !IsIgnored(signal)) Handle(signal, Note);
  }
  return wakening[0];
}

bool EndSignal::Wanted() {
  return endWanted;
}

void EndSignal::Wait(std::chrono::milliseconds time) {
  const auto end = std::chrono::steady_clock::now() + time;
  pollfd waking{wakening[0], POLLIN, 0};
  for (auto left = time; left.count() > 0 && !endWanted;) {
    static_cast<void>(poll(&waking, 1, static_cast<int>(left.count())));
    left = std::chrono::duration_cast<std::chrono::milliseconds>(end -
                                                                 std::chrono::steady_clock::now());
  }
}

}  // namespace gorbex
