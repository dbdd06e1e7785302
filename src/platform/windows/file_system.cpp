#include "platform/windows/file_system.h"

#include <windows.h>

#include <memory>
#include <string_view>
#include <utility>

#include "platform/file_failure.h"
#include "platform/windows/full_path.h"
#include "platform/windows/handle.h"
#include "platform/windows/host_file.h"
#include "platform/windows/wide_text.h"

namespace gorbex {
namespace {

constexpr std::uint32_t kAttributes = file_attribute::kReadOnly | file_attribute::kHidden |
                                      file_attribute::kSystem | file_attribute::kArchive;

constexpr FileFailure kFailures[] = {
    {ERROR_FILE_NOT_FOUND, ErrorNumber::FileNotFound},
    {ERROR_PATH_NOT_FOUND, ErrorNumber::PathNotFound},
    {ERROR_INVALID_DRIVE, ErrorNumber::PathNotFound},
    {ERROR_BAD_NETPATH, ErrorNumber::PathNotFound},
    {ERROR_BAD_NET_NAME, ErrorNumber::PathNotFound},
    {ERROR_DIRECTORY, ErrorNumber::PathNotFound},
    {ERROR_INVALID_NAME, ErrorNumber::BadFileName},
    {ERROR_BAD_PATHNAME, ErrorNumber::BadFileName},
    {ERROR_FILENAME_EXCED_RANGE, ErrorNumber::BadFileName},
    {ERROR_ACCESS_DENIED, ErrorNumber::PermissionDenied},
    {ERROR_SHARING_VIOLATION, ErrorNumber::PermissionDenied},
    {ERROR_LOCK_VIOLATION, ErrorNumber::PermissionDenied},
    {ERROR_WRITE_PROTECT, ErrorNumber::PermissionDenied},
    {ERROR_DISK_FULL, ErrorNumber::DiskFull},
    {ERROR_HANDLE_DISK_FULL, ErrorNumber::DiskFull},
    {ERROR_FILE_TOO_LARGE, ErrorNumber::DiskFull},
    {ERROR_TOO_MANY_OPEN_FILES, ErrorNumber::TooManyFiles},
    {ERROR_NOT_READY, ErrorNumber::DeviceError},
    {ERROR_CRC, ErrorNumber::DeviceError},
    {ERROR_IO_DEVICE, ErrorNumber::DeviceError},
    {ERROR_READ_FAULT, ErrorNumber::DeviceError},
    {ERROR_WRITE_FAULT, ErrorNumber::DeviceError},
    {ERROR_GEN_FAILURE, ErrorNumber::DeviceError},
    {ERROR_NOT_ENOUGH_MEMORY, ErrorNumber::OutOfMemory},
    {ERROR_OUTOFMEMORY, ErrorNumber::OutOfMemory},
};

[[noreturn]] void RaiseLast(const std::string& path) {
  throw RuntimeError(NumberIn(kFailures, static_cast<int>(GetLastError())), path);
}

void Require(bool succeeded, const std::string& path) {
  if (!succeeded) RaiseLast(path);
}

std::uint64_t TicksOf(const FILETIME& time) {
  return std::uint64_t{time.dwHighDateTime} << 32U | time.dwLowDateTime;
}

std::wstring PossiblePath(const std::string& path) {
  auto full = FullPathOf(path);
  if (!full) throw RuntimeError(ErrorNumber::BadFileName, path);
  if (IsDevice(*full)) throw RuntimeError(ErrorNumber::PathFileAccess, path);
  return std::move(*full);
}

/// The system's facts about a file.
struct Facts {
  DWORD attributes = 0;
  FILETIME lastWrite{};
  FILETIME created{};
  std::uint64_t size = 0;

  [[nodiscard]] bool IsFolder() const { return (attributes & FILE_ATTRIBUTE_DIRECTORY) != 0; }
  [[nodiscard]] bool IsReadOnly() const { return (attributes & FILE_ATTRIBUTE_READONLY) != 0; }
};

template <class Data>
Facts FactsOf(const Data& data) {
  return {data.dwFileAttributes, data.ftLastWriteTime, data.ftCreationTime,
          std::uint64_t{data.nFileSizeHigh} << 32U | data.nFileSizeLow};
}

// Of the file that a symbolic link leads to.
std::optional<Facts> FactsBehindLink(const std::wstring& path) {
  const Handle file(CreateFileW(path.c_str(), FILE_READ_ATTRIBUTES,
                                FILE_SHARE_READ | FILE_SHARE_WRITE | FILE_SHARE_DELETE, nullptr,
                                OPEN_EXISTING, FILE_FLAG_BACKUP_SEMANTICS, nullptr));
  BY_HANDLE_FILE_INFORMATION data{};
  if (!file || GetFileInformationByHandle(file.Get(), &data) == 0) return std::nullopt;
  return FactsOf(data);
}

// Nothing with the system's last error when there is none.
std::optional<Facts> Find(const std::wstring& path) {
  WIN32_FILE_ATTRIBUTE_DATA data{};
  if (GetFileAttributesExW(path.c_str(), GetFileExInfoStandard, &data) == 0) return std::nullopt;
  if ((data.dwFileAttributes & FILE_ATTRIBUTE_REPARSE_POINT) != 0) return FactsBehindLink(path);
  return FactsOf(data);
}

std::wstring WritableTarget(const std::string& path) {
  auto target = PossiblePath(path);
  const auto facts = Find(target);
  if (facts && (facts->IsFolder() || facts->IsReadOnly())) {
    throw RuntimeError(ErrorNumber::PathFileAccess, path);
  }
  return target;
}

/// A path under which something exists, and what it is.
struct Existing {
  std::wstring path;
  Facts facts;
};

std::optional<Existing> FindExisting(const std::string& path) {
  auto full = FullPathOf(path);
  if (!full || IsDevice(*full)) return std::nullopt;
  const auto facts = Find(*full);
  if (!facts) return std::nullopt;
  return Existing{std::move(*full), *facts};
}

Existing RequireExisting(const std::string& path) {
  auto found = FindExisting(path);
  if (!found) throw RuntimeError(ErrorNumber::FileNotFound, path);
  return std::move(*found);
}

std::optional<FolderEntry> EntryOf(const WIN32_FIND_DATAW& found) {
  const std::wstring_view name(static_cast<const wchar_t*>(found.cFileName));
  if (name == L"." || name == L"..") return std::nullopt;
  const auto exact = FromWide(name);
  const bool isLink = (found.dwFileAttributes & FILE_ATTRIBUTE_REPARSE_POINT) != 0 &&
                      (found.dwReserved0 == IO_REPARSE_TAG_SYMLINK ||
                       found.dwReserved0 == IO_REPARSE_TAG_MOUNT_POINT);
  const bool isFolder = (found.dwFileAttributes & FILE_ATTRIBUTE_DIRECTORY) != 0;
  return FolderEntry{exact.value_or(FromWideRoughly(name)), isFolder, isLink, exact.has_value()};
}

}  // namespace

std::optional<FileInfo> WindowsFileSystem::Look(const std::string& path) const {
  const auto found = FindExisting(path);
  if (!found) return std::nullopt;
  const auto& facts = found->facts;
  FileInfo info;
  info.isFolder = facts.IsFolder();
  const auto ticks = TicksOf(facts.lastWrite);
  if (ticks != 0) info.lastWrite = FileTime{ticks};
  if (info.isFolder) return info;
  info.size = facts.size;
  info.identity = TicksOf(facts.created);
  info.attributes = facts.attributes & kAttributes;
  return info;
}

std::string WindowsFileSystem::Read(const std::string& path) const {
  const auto full = PossiblePath(path);
  const auto facts = Find(full);
  if (!facts) RaiseLast(path);
  if (facts->IsFolder()) throw RuntimeError(ErrorNumber::PathFileAccess, path);
  return Reporting(kFailures, path, [&] { return ReadHostFile(full); });
}

std::vector<FolderEntry> WindowsFileSystem::List(const std::string& folder) const {
  const auto place = FindExisting(folder);
  if (!place || !place->facts.IsFolder()) throw RuntimeError(ErrorNumber::PathNotFound, folder);
  WIN32_FIND_DATAW found{};
  const auto pattern = place->path + (place->path.ends_with(L'\\') ? L"*" : L"\\*");
  const auto close = [](void* search) { FindClose(search); };
  const HANDLE first = FindFirstFileW(pattern.c_str(), &found);
  if (first == INVALID_HANDLE_VALUE) throw RuntimeError(ErrorNumber::PathFileAccess, folder);
  const std::unique_ptr<void, decltype(close)> search(first, close);
  std::vector<FolderEntry> entries;
  do {
    if (auto entry = EntryOf(found)) entries.push_back(std::move(*entry));
  } while (FindNextFileW(search.get(), &found) != 0);
  if (GetLastError() != ERROR_NO_MORE_FILES) {
    throw RuntimeError(ErrorNumber::PathFileAccess, folder);
  }
  return entries;
}

void WindowsFileSystem::Write(const std::string& path, const std::string& bytes) {
  const auto target = WritableTarget(path);
  Reporting(kFailures, path, [&] { ReplaceHostFile(target, bytes); });
}

void WindowsFileSystem::Append(const std::string& path, const std::string& bytes) {
  const auto target = WritableTarget(path);
  Reporting(kFailures, path, [&] { AppendHostFile(target, bytes); });
}

void WindowsFileSystem::Remove(const std::string& path) {
  const auto [full, facts] = RequireExisting(path);
  if (facts.IsFolder() || facts.IsReadOnly()) {
    throw RuntimeError(ErrorNumber::PathFileAccess, path);
  }
  Require(DeleteFileW(full.c_str()) != 0, path);
}

void WindowsFileSystem::SetAttributes(const std::string& path, std::uint32_t attributes) {
  const auto [full, facts] = RequireExisting(path);
  const DWORD wanted = attributes & kAttributes;
  Require(SetFileAttributesW(full.c_str(), wanted != 0 ? wanted : FILE_ATTRIBUTE_NORMAL) != 0,
          path);
}

void WindowsFileSystem::CreateFolder(const std::string& path) {
  const auto full = PossiblePath(path);
  Require(CreateDirectoryW(full.c_str(), nullptr) != 0, path);
}

}  // namespace gorbex
