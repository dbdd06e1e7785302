#include "platform/windows/full_path.h"

#include <windows.h>

#include <utility>

#include "platform/windows/wide_text.h"
#include "platform/windows_path.h"

namespace gorbex {

std::optional<std::wstring> FullPathOf(const std::string& path) {
  if (!ParseWindowsPath(path)) return std::nullopt;
  const auto wide = ToWide(path);
  auto full = TextOfCall([&](wchar_t* text, DWORD room) {
    return GetFullPathNameW(wide.c_str(), room, text, nullptr);
  });
  return full.empty() ? std::nullopt : std::optional(std::move(full));
}

bool IsDevice(const std::wstring& fullPath) {
  return fullPath.starts_with(L"\\\\.\\") || fullPath.starts_with(L"\\\\?\\");
}

bool IsFile(const std::wstring& fullPath) {
  if (IsDevice(fullPath)) return false;
  const DWORD attributes = GetFileAttributesW(fullPath.c_str());
  return attributes != INVALID_FILE_ATTRIBUTES && (attributes & FILE_ATTRIBUTE_DIRECTORY) == 0;
}

std::wstring OwnFile() {
  std::wstring path(MAX_PATH, L'\0');
  for (;;) {
    const DWORD length = GetModuleFileNameW(nullptr, path.data(), static_cast<DWORD>(path.size()));
    if (length < path.size()) {
      path.resize(length);
      return path;
    }
    path.resize(2 * path.size());
  }
}

}  // namespace gorbex
