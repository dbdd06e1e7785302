#include "platform/windows/end_signal.h"

#include <windows.h>

#include <atomic>

namespace gorbex {
namespace {

// The system's call reaches nothing but globals. The event wakes a wait without a race.
std::atomic<bool> wanted{false};
HANDLE wakening = nullptr;

BOOL WINAPI Note(DWORD signal) {
  if (wanted.exchange(true)) return FALSE;
  SetEvent(wakening);
  // After these the program ends with this call's return; its time is limited by the system.
  if (signal != CTRL_C_EVENT && signal != CTRL_BREAK_EVENT) Sleep(INFINITE);
  return TRUE;
}

}  // namespace

void EndSignal::Listen() {
  if (wakening != nullptr) return;
  wakening = CreateEventW(nullptr, TRUE, FALSE, nullptr);
  if (wakening != nullptr) SetConsoleCtrlHandler(Note, TRUE);
}

bool EndSignal::Wanted() {
  return wanted;
}

void EndSignal::Wait(std::chrono::milliseconds time) {
  const auto milliseconds = static_cast<DWORD>(time.count());
  if (wakening == nullptr) {
    Sleep(milliseconds);
  } else {
    WaitForSingleObject(wakening, milliseconds);
  }
}

}  // namespace gorbex
