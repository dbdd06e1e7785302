#include <windows.h>

#include <chrono>

#include "platform/windows/end_signal.h"

// Presses Ctrl+C at a console of its own, and ends with 3 when that is noted.
int main() {
  FreeConsole();
  AllocConsole();
  gorbex::EndSignal::Listen();
  if (gorbex::EndSignal::Wanted()) return 1;
  if (GenerateConsoleCtrlEvent(CTRL_C_EVENT, 0) == 0) return 2;
  gorbex::EndSignal::Wait(std::chrono::seconds(30));
  return gorbex::EndSignal::Wanted() ? 3 : 4;
}
