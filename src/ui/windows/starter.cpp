#include "ui/windows/starter.h"

#include <windows.h>

#include "platform/windows/handle.h"
#include "platform/windows/wide_text.h"

namespace gorbex::ui {
namespace {

bool TellFile(const std::string& text, HANDLE file) {
  const DWORD type = GetFileType(file);
  if (type != FILE_TYPE_DISK && type != FILE_TYPE_PIPE) return false;
  DWORD written = 0;
  return WriteFile(file, text.data(), static_cast<DWORD>(text.size()), &written, nullptr) != 0;
}

bool TellConsole(const std::wstring& text) {
  if (AttachConsole(ATTACH_PARENT_PROCESS) == 0) return false;
  const Handle console(CreateFileW(L"CONOUT$", GENERIC_READ | GENERIC_WRITE,
                                   FILE_SHARE_READ | FILE_SHARE_WRITE, nullptr, OPEN_EXISTING, 0,
                                   nullptr));
  // The command prompt has not waited for us: it is on this line already.
  const std::wstring lines = L"\n" + text;
  DWORD written = 0;
  return WriteConsoleW(console.Get(), lines.data(), static_cast<DWORD>(lines.size()), &written,
                       nullptr) != 0;
}

}  // namespace

void TellStarter(const std::string& text, StarterStream stream) {
  const bool isError = stream == StarterStream::Errors;
  if (TellFile(text, GetStdHandle(isError ? STD_ERROR_HANDLE : STD_OUTPUT_HANDLE))) return;
  const std::wstring wide = WideFromUtf8(text);
  if (TellConsole(wide)) return;
  MessageBoxW(nullptr, wide.c_str(), L"GorbexBuilder", isError ? MB_ICONERROR : MB_ICONINFORMATION);
}

}  // namespace gorbex::ui
