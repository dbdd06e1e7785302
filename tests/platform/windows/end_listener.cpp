#include <windows.h>

#include <chrono>

#include "platform/windows/end_signal.h"

namespace {

// Other programs of ours may be running beside the tests.
HWND OwnSessionWindow() {
  HWND window = nullptr;
  DWORD owner = 0;
  do {
    window = FindWindowExW(nullptr, window, L"GorbexSession", nullptr);
    if (window != nullptr) GetWindowThreadProcessId(window, &owner);
  } while (window != nullptr && owner != GetCurrentProcessId());
  return window;
}

// As the system does when the user logs off.
bool EndSession() {
  HWND window = nullptr;
  for (int tries = 0; window == nullptr && tries < 200; ++tries, Sleep(50)) {
    window = OwnSessionWindow();
  }
  return SendMessageW(window, WM_QUERYENDSESSION, 0, 0) == TRUE && !gorbex::EndSignal::Wanted() &&
         PostMessageW(window, WM_ENDSESSION, TRUE, 0) != 0;
}

}  // namespace

// Presses Ctrl+C at its own console, or with an argument ends the user's session, and ends
// with 3 when that is noted.
int main(int count, char** /*arguments*/) {
  FreeConsole();
  AllocConsole();
  gorbex::EndSignal::Listen();
  if (gorbex::EndSignal::Wanted()) return 1;
  if (!(count > 1 ? EndSession() : GenerateConsoleCtrlEvent(CTRL_C_EVENT, 0) != 0)) return 2;
  gorbex::EndSignal::Wait(std::chrono::seconds(30));
  return gorbex::EndSignal::Wanted() ? 3 : 4;
}
