#include "platform/linux/prefix.h"

#include <pwd.h>
#include <unistd.h>

#include <algorithm>
#include <cerrno>
#include <climits>
#include <span>
#include <system_error>
#include <utility>
#include <vector>

#include "platform/code_page.h"
#include "platform/runtime_error.h"

namespace gorbex {
namespace {

namespace fs = std::filesystem;

std::optional<fs::path> FolderIn(const Prefix::Environment& environment, const char* name) {
  const auto value = environment(name);
  if (!value || value->empty()) return std::nullopt;
  return fs::path(*value);
}

fs::path HomeFolder(const Prefix::Environment& environment) {
  if (auto home = FolderIn(environment, "HOME")) return *home;
  const passwd* user = getpwuid(getuid());
  return user != nullptr ? user->pw_dir : "/";
}

[[noreturn]] void RaiseCannotMake(const fs::path& path, const std::error_code& error) {
  const bool denied = error == std::errc::permission_denied ||
                      error == std::errc::operation_not_permitted ||
                      error == std::errc::read_only_file_system;
  throw RuntimeError(denied ? ErrorNumber::PermissionDenied : ErrorNumber::PathNotFound,
                     FromUtf8(path.native()).value_or(path.native()));
}

void MakeFolders(const fs::path& path) {
  std::error_code error;
  fs::create_directories(path, error);
  if (error || !fs::is_directory(path, error)) RaiseCannotMake(path, error);
}

// Another program may lay out the same prefix at the same time.
void MakeLink(const fs::path& link, const fs::path& target) {
  std::error_code error;
  fs::create_symlink(target, link, error);
  if (error && error != std::errc::file_exists) RaiseCannotMake(link, error);
}

std::string HostPath(std::string start, std::span<const std::string_view> names) {
  std::size_t size = start.size();
  for (const auto name : names) size += name.size() + 1;
  start.reserve(size);
  for (const auto name : names) {
    start += '/';
    if (IsAscii(name)) {
      start += name;
    } else {
      start += ToUtf8(name);
    }
  }
  return start;
}

// The host path below a folder; nothing when it does not lie there.
std::optional<std::string> Below(const std::string& path, const std::string& folder) {
  if (!path.starts_with(folder)) return std::nullopt;
  if (path.size() > folder.size() && path[folder.size()] != '/') return std::nullopt;
  return path.substr(folder.size());
}

fs::path WithoutTrailingSeparator(const fs::path& path) {
  return path.has_filename() || !path.has_relative_path() ? path : path.parent_path();
}

struct Drive {
  char letter;
  std::string folder;
};

// Every drive but the one of the host's root, under each path by which its folder is known.
std::vector<Drive> DrivesOf(const fs::path& root) {
  std::vector<Drive> drives;
  for (char letter = 'a'; letter <= 'z'; ++letter) {
    const auto link = root / "dosdevices" / (std::string(1, letter) + ":");
    std::error_code error;
    const auto real = fs::canonical(link, error);
    if (error || real == "/") continue;
    drives.push_back({letter, link.native()});
    drives.push_back({letter, real.native()});
    const auto target = fs::read_symlink(link, error);
    if (error) continue;
    const auto named = (link.parent_path() / target).lexically_normal();
    drives.push_back({letter, WithoutTrailingSeparator(named).native()});
  }
  return drives;
}

std::optional<std::string> InDrives(const std::string& path, const std::vector<Drive>& drives) {
  std::optional<std::string> found;
  std::size_t longest = 0;
  for (const auto& drive : drives) {
    const auto rest = Below(path, drive.folder);
    if (!rest || drive.folder.size() <= longest) continue;
    longest = drive.folder.size();
    found = UpperCase(std::string(1, drive.letter)) + ":" + (rest->empty() ? "/" : *rest);
  }
  return found;
}

bool HasOnlyWindowsNames(const std::string& path) {
  return std::all_of(path.begin(), path.end(),
                     [](char c) { return c == '/' || IsNameCharacter(c); });
}

}  // namespace

fs::path Prefix::Choose(const std::optional<fs::path>& option, const Environment& environment) {
  if (option) return *option;
  if (auto own = FolderIn(environment, "GORBEX_PREFIX")) return *own;
  if (auto wine = FolderIn(environment, "WINEPREFIX")) return *wine;
  const auto home = HomeFolder(environment);
  std::error_code error;
  if (fs::is_directory(home / ".wine", error)) return home / ".wine";
  const auto data = FolderIn(environment, "XDG_DATA_HOME");
  return (data && data->is_absolute() ? *data : home / ".local/share") / "gorbexbuilder";
}

Prefix::Prefix(const fs::path& root) {
  std::error_code error;
  auto whole = fs::absolute(root, error);
  if (error) RaiseCannotMake(root, error);
  root_ = WithoutTrailingSeparator(whole.lexically_normal());
  LayOut();
}

void Prefix::LayOut() const {
  const auto devices = root_ / "dosdevices";
  MakeFolders(devices);
  std::error_code error;
  if (!fs::exists(fs::symlink_status(devices / "c:", error))) {
    MakeFolders(root_ / "drive_c");
    MakeLink(devices / "c:", "../drive_c");
  }
  if (!fs::exists(fs::symlink_status(devices / "z:", error))) MakeLink(devices / "z:", "/");
  for (const char* folder : {"C:\\Program Files", "C:\\Program Files\\GorbexBuilder",
                             "C:\\Program Files\\GorbexBuilder\\Logs"}) {
    const auto target = Target(folder);
    if (!target) throw RuntimeError(ErrorNumber::PathNotFound, folder);
    MakeFolders(*target);
  }
}

bool Prefix::IsWine() const {
  std::error_code error;
  // Wine writes its registry some seconds after it has made a prefix, this file at once.
  return fs::is_regular_file(root_ / "system.reg", error) ||
         fs::is_regular_file(root_ / ".update-timestamp", error);
}

std::string Prefix::StartOf(const ParsedPath& path) const {
  switch (path.start) {
    case ParsedPath::Start::Drive:
      return root_.native() + "/dosdevices/" + path.drive + ':';
    case ParsedPath::Start::Share:
      return root_.native() + "/dosdevices/unc";
    case ParsedPath::Start::CurrentFolder:
      break;
  }
  std::error_code error;
  auto folder = fs::current_path(error);
  if (error) folder = ".";
  for (std::size_t i = 0; i < path.levelsUp; ++i) folder = folder.parent_path();
  return folder == "/" ? std::string() : folder.native();
}

std::optional<Prefix::HostEntry> Prefix::Find(const ParsedPath& path) const {
  HostEntry entry{ExactPath(path)};
  if (stat(entry.path.c_str(), &entry.info) == 0) return entry;
  if (errno != ENOENT && errno != ENOTDIR) return std::nullopt;
  auto similar = SimilarPath(path);
  if (!similar) return std::nullopt;
  entry.path = std::move(*similar);
  if (stat(entry.path.c_str(), &entry.info) != 0) return std::nullopt;
  return entry;
}

std::string Prefix::ExactPath(const ParsedPath& path) const {
  auto exact = HostPath(StartOf(path), path.names);
  return exact.empty() ? "/" : exact;
}

// Most of a path is spelled as given, so the look goes up to the deepest folder that is there
// and down again from it.
std::optional<std::string> Prefix::SimilarPath(const ParsedPath& path) const {
  const std::span<const std::string_view> names(path.names);
  for (auto known = names.size(); known-- > 0;) {
    auto found = std::optional(HostPath(StartOf(path), names.first(known)));
    const auto look = names_.Find(*found, names[known]);
    if (!look.hasFolder) continue;
    if (!look.name) return std::nullopt;
    found->append("/").append(*look.name);
    for (const auto name : names.subspan(known + 1)) {
      found = Child(*found, name);
      if (!found) break;
    }
    return found;
  }
  return std::nullopt;
}

std::optional<std::string> Prefix::Child(const std::string& folder, std::string_view name) const {
  const auto look = names_.Find(folder, name);
  return look.name ? std::optional(folder + "/" + *look.name) : std::nullopt;
}

std::optional<std::string> Prefix::Exact(const std::string& windowsPath) const {
  const auto path = ParseWindowsPath(windowsPath);
  return path ? std::optional(ExactPath(*path)) : std::nullopt;
}

std::optional<Prefix::HostEntry> Prefix::Find(const std::string& windowsPath) const {
  const auto path = ParseWindowsPath(windowsPath);
  return path ? Find(*path) : std::nullopt;
}

std::optional<std::string> Prefix::Existing(const std::string& windowsPath) const {
  auto entry = Find(windowsPath);
  if (!entry) return std::nullopt;
  return std::move(entry->path);
}

std::optional<std::string> Prefix::Target(const std::string& windowsPath) const {
  if (auto entry = Find(windowsPath)) return std::move(entry->path);
  return NewTarget(windowsPath);
}

std::optional<std::string> Prefix::NewTarget(const std::string& windowsPath) const {
  auto path = ParseWindowsPath(windowsPath);
  if (!path || path->names.empty()) return std::nullopt;

  const auto name = path->names.back();
  path->names.pop_back();
  const auto folder = Find(*path);
  if (!folder || !S_ISDIR(folder->info.st_mode)) return std::nullopt;
  // A link that leads nowhere exists as a name, and a new file takes the place it points at.
  if (auto link = Child(folder->path, name)) return link;
  const auto hostName = ToUtf8(name);
  if (hostName.size() > NAME_MAX || folder->path.size() + hostName.size() + 2 > PATH_MAX) {
    return std::nullopt;
  }
  return folder->path + "/" + hostName;
}

std::string Prefix::WindowsPath(const fs::path& hostPath) const {
  std::error_code error;
  const auto named = WithoutTrailingSeparator(fs::absolute(hostPath, error).lexically_normal());
  const auto drives = DrivesOf(root_);
  auto path = InDrives(named.native(), drives);
  if (!path) {
    const auto real = fs::weakly_canonical(named, error);
    if (!error) path = InDrives(real.native(), drives);
  }
  auto bytes = FromUtf8(path ? *path : "Z:" + named.native());
  if (!bytes || !HasOnlyWindowsNames(bytes->substr(2))) {
    throw RuntimeError(ErrorNumber::BadFileName, hostPath.native());
  }
  std::replace(bytes->begin(), bytes->end(), '/', '\\');
  return *bytes;
}

}  // namespace gorbex
