#include "platform/linux/file_system.h"

#include <dirent.h>
#include <fcntl.h>
#include <unistd.h>

#include <algorithm>
#include <cerrno>
#include <cstdint>
#include <memory>
#include <tuple>
#include <utility>

#include "platform/code_page.h"
#include "platform/file_failure.h"
#include "platform/linux/host_file.h"

namespace gorbex {
namespace {

constexpr mode_t kWriteBits = S_IWUSR | S_IWGRP | S_IWOTH;

constexpr FileFailure kFailures[] = {
    {ENOENT, ErrorNumber::FileNotFound},    {ENAMETOOLONG, ErrorNumber::FileNotFound},
    {ENOTDIR, ErrorNumber::PathNotFound},   {EACCES, ErrorNumber::PermissionDenied},
    {EPERM, ErrorNumber::PermissionDenied}, {ENOSPC, ErrorNumber::DiskFull},
    {EDQUOT, ErrorNumber::DiskFull},        {EFBIG, ErrorNumber::DiskFull},
    {EMFILE, ErrorNumber::TooManyFiles},    {ENFILE, ErrorNumber::TooManyFiles},
    {EIO, ErrorNumber::DeviceError},        {ENOMEM, ErrorNumber::OutOfMemory},
};

void Require(bool succeeded, const std::string& path) {
  if (!succeeded) throw RuntimeError(NumberIn(kFailures, errno), path);
}

bool IsReadOnly(const struct stat& info) {
  return (info.st_mode & S_IWUSR) == 0;
}

// A folder that its group or everybody may write into counts as open.
bool IsClosed(const struct stat& folder) {
  const uid_t user = geteuid();
  const mode_t rights = folder.st_uid == user ? S_IWUSR : S_IWGRP | S_IWOTH;
  return user != 0 && (folder.st_mode & rights) == 0;
}

std::optional<FileTime> LastWrite(const struct stat& info) {
  constexpr std::int64_t kSecondsTo1970 = 11'644'473'600;
  constexpr std::int64_t kTicksPerSecond = 10'000'000;
  const std::int64_t seconds = info.st_mtim.tv_sec;
  if (seconds < -kSecondsTo1970 || seconds > INT64_MAX / kTicksPerSecond - kSecondsTo1970 - 1) {
    return std::nullopt;
  }
  const auto ticks = (seconds + kSecondsTo1970) * kTicksPerSecond + info.st_mtim.tv_nsec / 100;
  return FileTime{static_cast<std::uint64_t>(ticks)};
}

// The time of the last change of any kind cannot be set by a program, as the others can.
std::uint64_t IdentityOf(const struct stat& info) {
  constexpr std::uint64_t kMix = 0x9E3779B97F4A7C15;
  std::uint64_t mixed = info.st_dev;
  for (const std::uint64_t part :
       {std::uint64_t{info.st_ino}, static_cast<std::uint64_t>(info.st_ctim.tv_sec),
        static_cast<std::uint64_t>(info.st_ctim.tv_nsec)}) {
    mixed = (mixed ^ part) * kMix;
    mixed ^= mixed >> 29U;
  }
  return mixed;
}

FileInfo InfoOf(const struct stat& entry) {
  FileInfo info;
  info.isFolder = S_ISDIR(entry.st_mode);
  info.lastWrite = LastWrite(entry);
  if (info.isFolder) {
    if (IsClosed(entry)) info.attributes = file_attribute::kReadOnly;
    return info;
  }
  info.size = static_cast<std::uint64_t>(entry.st_size);
  info.identity = IdentityOf(entry);
  info.attributes = file_attribute::kArchive;
  if (IsReadOnly(entry)) info.attributes |= file_attribute::kReadOnly;
  return info;
}

// One that every system spells the same, in the folder itself.
bool IsPlainName(std::string_view name) {
  const bool endsPlain = !name.empty() && name.back() != '.' && name.back() != ' ';
  return endsPlain && IsAscii(name) && std::all_of(name.begin(), name.end(), IsNameCharacter);
}

mode_t UserFileMask() {
  const mode_t mask = umask(0);
  umask(mask);
  return mask;
}

bool IsFolder(DIR* stream, const dirent& entry) {
  if (entry.d_type != DT_LNK && entry.d_type != DT_UNKNOWN) return entry.d_type == DT_DIR;
  struct stat info {};
  return fstatat(dirfd(stream), entry.d_name, &info, 0) == 0 && S_ISDIR(info.st_mode);
}

bool IsLink(DIR* stream, const dirent& entry) {
  if (entry.d_type != DT_UNKNOWN) return entry.d_type == DT_LNK;
  struct stat info {};
  return fstatat(dirfd(stream), entry.d_name, &info, AT_SYMLINK_NOFOLLOW) == 0 &&
         S_ISLNK(info.st_mode);
}

bool IsFolderItself(std::string_view name) {
  return name == "." || name == "..";
}

FolderEntry EntryOf(DIR* stream, const dirent& found) {
  const std::string_view hostName(found.d_name);
  const auto name = FromUtf8(hostName);
  const bool isReachable = name && std::all_of(name->begin(), name->end(), IsNameCharacter);
  return {name.value_or(FromUtf8Roughly(hostName)), IsFolder(stream, found), IsLink(stream, found),
          isReachable};
}

}  // namespace

LinuxFileSystem::LinuxFileSystem(const Prefix& prefix)
    : prefix_(prefix), newFileMode_(0666 & ~UserFileMask()) {}

std::optional<FileInfo> LinuxFileSystem::Look(const std::string& path) const {
  const auto entry = prefix_.Find(path);
  return entry ? std::optional(InfoOf(entry->info)) : std::nullopt;
}

// The host looks a short name up faster than a long path. One that is not there as it is spelled
// may be there in other letters.
std::vector<std::optional<FileInfo>> LinuxFileSystem::LookIn(
    const std::string& folder, const std::vector<std::string_view>& names) const {
  const auto path = prefix_.Exact(folder);
  const int open = path ? ::open(path->c_str(), O_PATH | O_DIRECTORY | O_CLOEXEC) : -1;
  if (open < 0) return FileSystem::LookIn(folder, names);
  std::vector<std::optional<FileInfo>> found;
  found.reserve(names.size());
  std::string spelled;
  struct stat info {};
  for (const auto name : names) {
    spelled = name;
    const bool isFound = IsPlainName(name) && fstatat(open, spelled.c_str(), &info, 0) == 0;
    found.push_back(isFound ? std::optional(InfoOf(info)) : Look(ResolvedPath(folder, name)));
  }
  close(open);
  return found;
}

ErrorNumber LinuxFileSystem::AbsenceOf(const std::string& path) const {
  if (!ParseWindowsPath(path)) return ErrorNumber::BadFileName;
  const auto end = path.find_last_of("\\/");
  if (end == std::string::npos) return ErrorNumber::FileNotFound;
  const auto folder = Look(path.substr(0, end + 1));
  return folder && folder->isFolder ? ErrorNumber::FileNotFound : ErrorNumber::PathNotFound;
}

std::string LinuxFileSystem::Read(const std::string& path) const {
  const auto exact = prefix_.Exact(path);
  if (auto bytes = exact ? Reporting(kFailures, path, [&] { return ReadHostFileIfThere(*exact); })
                         : std::nullopt) {
    return std::move(*bytes);
  }
  const auto entry = prefix_.Find(path);
  if (!entry) throw RuntimeError(AbsenceOf(path), path);
  return Reporting(kFailures, path, [&] { return ReadHostFile(entry->path); });
}

std::vector<FolderEntry> LinuxFileSystem::List(const std::string& folder) const {
  const auto entry = prefix_.Find(folder);
  if (!entry || !S_ISDIR(entry->info.st_mode)) {
    throw RuntimeError(ErrorNumber::PathNotFound, folder);
  }
  const auto close = [](DIR* open) { closedir(open); };
  const std::unique_ptr<DIR, decltype(close)> stream(opendir(entry->path.c_str()), close);
  if (!stream) throw RuntimeError(ErrorNumber::PathFileAccess, folder);

  std::vector<std::pair<std::string, FolderEntry>> entries;
  while (const dirent* found = readdir(stream.get())) {
    if (IsFolderItself(found->d_name)) continue;
    auto value = EntryOf(stream.get(), *found);
    auto order = UpperCase(value.name);
    entries.emplace_back(std::move(order), std::move(value));
  }
  std::sort(entries.begin(), entries.end(), [](const auto& a, const auto& b) {
    return std::tie(a.first, a.second.name) < std::tie(b.first, b.second.name);
  });
  std::vector<FolderEntry> sorted;
  sorted.reserve(entries.size());
  for (auto& [order, value] : entries) sorted.push_back(std::move(value));
  return sorted;
}

std::string LinuxFileSystem::WritableTarget(const std::string& path) const {
  if (auto entry = prefix_.Find(path)) {
    if (!S_ISREG(entry->info.st_mode) || IsReadOnly(entry->info)) {
      throw RuntimeError(ErrorNumber::PathFileAccess, path);
    }
    return std::move(entry->path);
  }
  if (auto target = prefix_.NewTarget(path)) return std::move(*target);
  const auto absence = AbsenceOf(path);
  throw RuntimeError(absence == ErrorNumber::FileNotFound ? ErrorNumber::BadFileName : absence,
                     path);
}

void LinuxFileSystem::Write(const std::string& path, const std::string& bytes) {
  const auto target = WritableTarget(path);
  Reporting(kFailures, path, [&] { ReplaceHostFile(target, bytes, newFileMode_, Flush::Wait); });
}

void LinuxFileSystem::WriteUnsynced(const std::string& path, const std::string& bytes) {
  const auto target = WritableTarget(path);
  Reporting(kFailures, path, [&] { ReplaceHostFile(target, bytes, newFileMode_, Flush::Later); });
}

void LinuxFileSystem::Append(const std::string& path, const std::string& bytes) {
  const auto exact = prefix_.Exact(path);
  if (exact && Reporting(kFailures, path, [&] { return AppendToHostFile(*exact, bytes); })) return;
  const auto target = WritableTarget(path);
  Reporting(kFailures, path, [&] { AppendHostFile(target, bytes); });
}

void LinuxFileSystem::Remove(const std::string& path) {
  const auto entry = prefix_.Find(path);
  if (!entry) throw RuntimeError(ErrorNumber::FileNotFound, path);
  if (S_ISDIR(entry->info.st_mode) || IsReadOnly(entry->info)) {
    throw RuntimeError(ErrorNumber::PathFileAccess, path);
  }
  Require(unlink(entry->path.c_str()) == 0, path);
}

void LinuxFileSystem::SetAttributes(const std::string& path, std::uint32_t attributes) {
  const auto entry = prefix_.Find(path);
  if (!entry) throw RuntimeError(ErrorNumber::FileNotFound, path);
  // A folder's attribute protects nothing in Windows, but its mode would here.
  if (S_ISDIR(entry->info.st_mode)) return;
  mode_t mode = entry->info.st_mode & 07777U;
  if ((attributes & file_attribute::kReadOnly) != 0) {
    mode &= ~kWriteBits;
  } else {
    const mode_t writableByReaders = (mode & 0444U) >> 1U;
    mode |= S_IWUSR | (writableByReaders & newFileMode_);
  }
  Require(chmod(entry->path.c_str(), mode) == 0, path);
}

void LinuxFileSystem::CreateFolder(const std::string& path) {
  const auto target = prefix_.Target(path);
  if (!target) {
    const bool isPossible = ParseWindowsPath(path).has_value();
    throw RuntimeError(isPossible ? ErrorNumber::PathNotFound : ErrorNumber::BadFileName, path);
  }
  if (mkdir(target->c_str(), 0777) == 0) return;
  throw RuntimeError(errno == ENOENT ? ErrorNumber::PathNotFound : NumberIn(kFailures, errno),
                     path);
}

}  // namespace gorbex
