#include "platform/windows/program_folder.h"

#include <windows.h>

#include <cstdint>
#include <optional>

#include "platform/plain_text.h"
#include "platform/runtime_error.h"
#include "platform/windows/child_process.h"
#include "platform/windows/full_path.h"
#include "platform/windows/wide_text.h"

namespace gorbex {
namespace {

std::optional<std::string> ShortPathOf(const std::wstring& folder) {
  const auto path = TextOfCall(
      [&](wchar_t* text, DWORD room) { return GetShortPathNameW(folder.c_str(), text, room); });
  return path.empty() ? std::nullopt : FromWide(path);
}

// The same name for the same folder at every start, and hardly ever for two folders.
std::wstring NameFor(const std::wstring& folder) {
  std::uint64_t hash = 0xcbf29ce484222325;
  for (const wchar_t letter : folder) hash = (hash ^ letter) * 0x100000001b3;
  const auto digits = Hexadecimal(hash);
  return {digits.begin(), digits.end()};
}

void Make(const std::wstring& folder) {
  if (CreateDirectoryW(folder.c_str(), nullptr) != 0 || GetLastError() == ERROR_ALREADY_EXISTS) {
    return;
  }
  throw RuntimeError(ErrorNumber::PathNotFound, FromWideRoughly(folder));
}

std::string FolderInsteadOf(const std::wstring& folder) {
  const auto common = EnvironmentVariable(L"ProgramData").value_or(L"C:\\ProgramData");
  const auto own = common + L"\\GorbexBuilder";
  const auto instead = own + L"\\" + NameFor(folder);
  Make(own);
  Make(instead);
  return FromWideRoughly(instead);
}

}  // namespace

std::wstring OwnFolder() {
  const auto file = OwnFile();
  return file.substr(0, file.find_last_of(L'\\'));
}

std::string SpelledFolder(const std::wstring& folder) {
  auto path = FromWide(folder);
  if (!path) path = ShortPathOf(folder);
  return path ? *path : FolderInsteadOf(folder);
}

}  // namespace gorbex
