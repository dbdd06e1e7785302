#include <windows.h>

#include <chrono>
#include <string>
#include <string_view>

#include "platform/windows/full_path.h"
#include "platform/windows/library_search.h"
#include "platform/windows/process.h"
#include "platform/windows/wide_text.h"

// child_starter die COMMAND | leave COMMAND | console | look | search
namespace {

using namespace gorbex;

std::unique_ptr<Process> Started(const std::string& command) {
  WindowsProcessLauncher launcher("C:\\");
  return std::get<0>(launcher.Start(command));
}

// Ends as a program does that is killed, once its child is at work.
[[noreturn]] void StartAndDie(const std::string& command, bool childLives) {
  const auto child = Started(command);
  if (childLives) child->OutliveProgram();
  Sleep(1500);
  TerminateProcess(GetCurrentProcess(), 9);
  ExitProcess(1);
}

bool HasConsoleForErrors() {
  DWORD mode = 0;
  return GetConsoleMode(GetStdHandle(STD_ERROR_HANDLE), &mode) != 0;
}

// What a child looks at that is started from a console; 9 when that console is none.
int LookFromConsole() {
  FreeConsole();
  AllocConsole();
  SetStdHandle(STD_ERROR_HANDLE, CreateFileW(L"CONOUT$", GENERIC_READ | GENERIC_WRITE,
                                             FILE_SHARE_WRITE, nullptr, OPEN_EXISTING, 0, nullptr));
  if (!HasConsoleForErrors()) return 9;
  const auto child = Started("\"" + FromWideRoughly(OwnFile()) + "\" look");
  return static_cast<int>(child->ExitCode(std::chrono::seconds(20)).value_or(8));
}

}  // namespace

int main(int count, char** arguments) {
  const std::string_view task(count > 1 ? arguments[1] : "");
  if (task == "die" || task == "leave") StartAndDie(arguments[2], task == "leave");
  if (task == "console") return LookFromConsole();
  if (task == "look") return HasConsoleForErrors() ? 1 : 3;
  SearchTrustedFoldersAlone();
  return LoadLibraryW(L"planted.dll") != nullptr ? 1 : 3;
}
