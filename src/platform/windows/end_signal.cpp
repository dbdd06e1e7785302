#include "platform/windows/end_signal.h"

#include <windows.h>

#include <atomic>

#include "platform/windows/handle.h"

namespace gorbex {
namespace {

// The system's call reaches nothing but globals. The event wakes a wait without a race.
std::atomic<bool> endWanted{false};
HANDLE wakening = nullptr;

BOOL WINAPI Note(DWORD signal) {
  if (endWanted.exchange(true)) return FALSE;
  SetEvent(wakening);
  // After any other signal the system ends the program when this call returns, so the call waits;
  // the system limits how long.
  if (signal != CTRL_C_EVENT && signal != CTRL_BREAK_EVENT) Sleep(INFINITE);
  return TRUE;
}

// The session waits until this returns; the system limits that time.
LRESULT CALLBACK OnSessionMessage(HWND window, UINT message, WPARAM first, LPARAM second) {
  if (message == WM_QUERYENDSESSION) {
    ShutdownBlockReasonCreate(window, L"What is at work is being ended.");
    return TRUE;
  }
  if (message == WM_ENDSESSION && first == FALSE) ShutdownBlockReasonDestroy(window);
  if (message != WM_ENDSESSION || first == FALSE) {
    return DefWindowProcW(window, message, first, second);
  }
  endWanted = true;
  SetEvent(wakening);
  Sleep(INFINITE);
  return 0;
}

// The system tells a program that has loaded its library of windows, as the one for components
// does, of the session's end by a message to a window and in no other way.
DWORD WINAPI WatchSession(void* /*nothing*/) {
  WNDCLASSW kind{};
  kind.lpfnWndProc = OnSessionMessage;
  kind.hInstance = GetModuleHandleW(nullptr);
  kind.lpszClassName = L"GorbexSession";
  RegisterClassW(&kind);
  const HWND window = CreateWindowExW(0, kind.lpszClassName, L"gorbex", WS_OVERLAPPED, 0, 0, 0, 0,
                                      nullptr, nullptr, kind.hInstance, nullptr);
  MSG message{};
  while (window != nullptr && GetMessageW(&message, nullptr, 0, 0) > 0) DispatchMessageW(&message);
  return 0;
}

}  // namespace

void EndSignal::Listen() {
  if (wakening != nullptr) return;
  wakening = CreateEventW(nullptr, TRUE, FALSE, nullptr);
  if (wakening == nullptr) return;
  SetConsoleCtrlHandler(Note, TRUE);
  const Handle watching(CreateThread(nullptr, 0, WatchSession, nullptr, 0, nullptr));
}

bool EndSignal::Wanted() {
  return endWanted;
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
