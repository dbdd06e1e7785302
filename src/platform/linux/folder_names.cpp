#include "platform/linux/folder_names.h"

#include <dirent.h>

#include <cerrno>
#include <ctime>
#include <memory>
#include <utility>

#include "platform/code_page.h"

namespace gorbex {
namespace {

// Cache only folders that are searched often.
constexpr std::size_t kMostFolders = 64;

// Some file systems count time in steps of two seconds: a folder that changed this recently could
// change again without its time moving on.
bool IsFresh(const timespec& modified) {
  constexpr std::time_t kClockStep = 3;
  return std::time(nullptr) - modified.tv_sec < kClockStep;
}

bool IsSameTime(const timespec& a, const timespec& b) {
  return a.tv_sec == b.tv_sec && a.tv_nsec == b.tv_nsec;
}

// A name that the code page cannot express counts as none.
std::optional<std::string> KeyOf(std::string_view hostName) {
  if (IsAscii(hostName)) return LowerCase(hostName);
  const auto bytes = FromUtf8(hostName);
  return bytes ? std::optional(LowerCase(*bytes)) : std::nullopt;
}

}  // namespace

bool FolderNames::Folder::IsCurrent(const struct stat& now) const {
  return !mayHaveChanged && info.st_dev == now.st_dev && info.st_ino == now.st_ino &&
         IsSameTime(info.st_mtim, now.st_mtim) && IsSameTime(info.st_ctim, now.st_ctim);
}

std::optional<FolderNames::Folder> FolderNames::Read(const std::string& path) {
  const std::unique_ptr<DIR, int (*)(DIR*)> stream(opendir(path.c_str()), closedir);
  Folder folder;
  if (!stream || fstat(dirfd(stream.get()), &folder.info) != 0) return std::nullopt;
  folder.mayHaveChanged = IsFresh(folder.info.st_mtim);
  while (const dirent* entry = readdir(stream.get())) {
    auto key = KeyOf(entry->d_name);
    if (!key) continue;
    const auto [place, isNew] = folder.names.emplace(std::move(*key), entry->d_name);
    if (!isNew && entry->d_name < place->second) place->second = entry->d_name;
  }
  return folder;
}

FolderNames::Look FolderNames::Find(const std::string& folder, std::string_view name) {
  const auto path = folder.empty() ? std::string("/") : folder;
  auto exact = ToUtf8(name);
  struct stat info {};
  if (lstat((path + "/" + exact).c_str(), &info) == 0) return {true, std::move(exact)};
  if (stat(path.c_str(), &info) != 0) return {errno != ENOENT && errno != ENOTDIR};

  const std::lock_guard lock(mutex_);
  auto known = folders_.find(path);
  if (known == folders_.end() || !known->second.IsCurrent(info)) {
    auto read = Read(path);
    if (!read) return {errno != ENOENT && errno != ENOTDIR};
    if (folders_.size() >= kMostFolders) folders_.clear();
    known = folders_.insert_or_assign(path, std::move(*read)).first;
  }
  const auto found = known->second.names.find(LowerCase(name));
  if (found == known->second.names.end()) return {true};
  return {true, found->second};
}

}  // namespace gorbex
