#include "platform/linux/registry.h"

#include <fcntl.h>
#include <sys/file.h>

#include <algorithm>
#include <cerrno>
#include <memory>
#include <system_error>
#include <thread>
#include <utility>

#include "platform/code_page.h"
#include "platform/linux/host_file.h"
#include "platform/linux/registry_text.h"
#include "platform/runtime_error.h"

namespace gorbex {
namespace {

using std::chrono::milliseconds;
using std::chrono::steady_clock;

constexpr auto kCheckInterval = milliseconds(5);
constexpr auto kLockPatience = std::chrono::seconds(10);
constexpr mode_t kPrivate = 0600;  // values may hold the user's secrets

constexpr std::string_view kMachine = "HKEY_LOCAL_MACHINE";
constexpr std::string_view kUser = "HKEY_CURRENT_USER";
constexpr std::string_view kUsers = "HKEY_USERS";
constexpr std::string_view kClasses = "Software\\Classes";
constexpr std::string_view kClasses32 = "Software\\Classes\\Wow6432Node";

std::string Join(std::string_view above, std::string_view below) {
  return std::string(above).append("\\").append(below);
}

std::int64_t Nanoseconds(const timespec& time) {
  return std::int64_t{time.tv_sec} * 1'000'000'000 + time.tv_nsec;
}

// A file changed this recently could change again without its time moving on.
bool IsFresh(std::int64_t modified) {
  constexpr std::int64_t kClockStep = 20'000'000;
  const auto now = std::chrono::system_clock::now().time_since_epoch();
  const auto age = std::chrono::nanoseconds(now).count() - modified;
  return age >= 0 && age < kClockStep;
}

std::size_t NumberOf(RegistryRoot root) {
  return static_cast<std::uint32_t>(root) - static_cast<std::uint32_t>(RegistryRoot::ClassesRoot);
}

void AddTop(std::vector<const RegistryKey*>& tops, const RegistryKey& top, std::string_view path) {
  if (const auto* key = top.Find(path)) tops.push_back(key);
}

const RegistryKey* FindIn(const std::vector<const RegistryKey*>& tops, std::string_view path) {
  for (const auto* top : tops) {
    if (const auto* key = top->Find(path)) return key;
  }
  return nullptr;
}

// Keeps other programs from writing; null when they do not release it in time.
std::unique_ptr<Descriptor> LockFile(const std::string& path) {
  auto file = std::make_unique<Descriptor>(open(path.c_str(), O_RDWR | O_CREAT | O_CLOEXEC, 0666));
  if (file->Number() < 0) return nullptr;
  const auto end = steady_clock::now() + kLockPatience;
  while (flock(file->Number(), LOCK_EX | LOCK_NB) != 0) {
    if (errno != EWOULDBLOCK && errno != EINTR) return nullptr;
    if (steady_clock::now() > end) return nullptr;
    std::this_thread::sleep_for(milliseconds(1));
  }
  return file;
}

}  // namespace

LinuxRegistry::LinuxRegistry(const std::filesystem::path& prefixRoot, LiveKey live)
    : live_(std::move(live)) {
  machine_.path = (prefixRoot / "system.reg").native();
  user_.path = (prefixRoot / "user.reg").native();
  own_.path = (prefixRoot / "gorbexbuilder.reg").native();
}

std::optional<LinuxRegistry::Stamp> LinuxRegistry::File::CurrentStamp() const {
  struct stat info {};
  if (stat(path.c_str(), &info) != 0) return std::nullopt;
  return Stamp{Nanoseconds(info.st_mtim), Nanoseconds(info.st_ctim), info.st_size, info.st_ino};
}

void LinuxRegistry::File::Load() {
  stamp = CurrentStamp();
  mayHaveChanged = stamp && IsFresh(stamp->modified);
  try {
    const auto text = ReadHostFile(path);
    RegistryKey fresh;
    senselessLines = ReadRegistryText(text, fresh);
    top = std::move(fresh);
    isReadable = true;
  } catch (const std::system_error& error) {
    // A file that was there a moment ago does not count as absent, or the next change would empty
    // it.
    isReadable = !stamp && error.code() == std::errc::no_such_file_or_directory;
    if (isReadable) top = RegistryKey();
    if (isReadable) senselessLines = 0;
  }
}

void LinuxRegistry::RequireReadable() const {
  Refresh();
  for (const File* file : {&machine_, &user_, &own_}) {
    if (file->isReadable) continue;
    throw RuntimeError(ErrorNumber::PathFileAccess, FromUtf8(file->path).value_or(file->path));
  }
}

void LinuxRegistry::RecheckWine() {
  Recheck();
  mayLag_ = true;
  asked_.clear();
}

void LinuxRegistry::Refresh() const {
  const auto now = steady_clock::now();
  if (lastCheck_ && now - *lastCheck_ < kCheckInterval) return;
  lastCheck_ = now;
  bool isStale = false;
  for (File* file : {&machine_, &user_, &own_}) {
    if (!file->HasChanged()) continue;
    file->Load();
    isStale = true;
    if (file == &machine_) asked_.clear();  // the file has taken the place of what Wine told
  }
  if (isStale) FindTops();
}

void LinuxRegistry::FindTops() const {
  tops_ = {};
  auto& [classes, user, machine, users] = tops_;
  AddTop(user, own_.top, kUser);
  user.push_back(&user_.top);
  AddTop(machine, own_.top, kMachine);
  machine.push_back(&machine_.top);
  AddTop(users, own_.top, kUsers);
  for (const auto* top : user) AddTop(classes, *top, kClasses);
  for (const auto* top : machine) AddTop(classes, *top, kClasses32);
  for (const auto* top : machine) AddTop(classes, *top, kClasses);
}

const LinuxRegistry::Tops& LinuxRegistry::TopsOf(RegistryRoot root) const {
  static const Tops kNone;
  Refresh();
  const auto number = NumberOf(root);
  return number < tops_.size() ? tops_[number] : kNone;
}

void LinuxRegistry::AskWine(std::string_view classesKey) const {
  const auto part = std::string(classesKey.substr(0, classesKey.find('\\')));
  if (!mayLag_ || !live_ || part.empty() || !asked_.insert(LowerCase(part)).second) return;
  for (const auto classes : {kClasses, kClasses32}) {
    if (machine_.top.Find(classes) == nullptr) continue;
    const auto path = Join(classes, part);
    const auto text = live_(Join(kMachine, path));
    if (!text) continue;
    RegistryKey told;
    ReadRegistryExport(*text, told);
    machine_.top.Remove(path);
    auto key = told.Take(Join(kMachine, path));
    if (key) machine_.top.Make(classes)->subKeys.insert_or_assign(part, std::move(key));
  }
  FindTops();
}

const LinuxRegistry::Tops& LinuxRegistry::FreshTops(RegistryRoot root,
                                                    std::string_view subKey) const {
  const auto& tops = TopsOf(root);
  if (root == RegistryRoot::ClassesRoot) AskWine(subKey);
  return tops;
}

bool LinuxRegistry::HasKey(RegistryRoot root, std::string_view subKey) const {
  return FindIn(FreshTops(root, subKey), subKey) != nullptr;
}

std::optional<RegistryValue> LinuxRegistry::Value(RegistryRoot root, std::string_view subKey,
                                                  std::string_view name) const {
  for (const auto* top : FreshTops(root, subKey)) {
    const auto* key = top->Find(subKey);
    if (key == nullptr) continue;
    const auto found = key->values.find(name);
    if (found != key->values.end()) return found->second;
  }
  return std::nullopt;
}

std::optional<std::string> LinuxRegistry::OwnPath(RegistryRoot root,
                                                  std::string_view subKey) const {
  if (root == RegistryRoot::ClassesRoot) {
    const auto path = Join(kClasses, subKey);
    const bool isUsers = !subKey.empty() && FindIn(TopsOf(RegistryRoot::CurrentUser), path);
    return Join(isUsers ? kUser : kMachine, path);
  }
  constexpr std::array kNames = {std::string_view(), kUser, kMachine, kUsers};
  const auto number = NumberOf(root);
  return number < kNames.size() ? std::optional(Join(kNames[number], subKey)) : std::nullopt;
}

bool LinuxRegistry::CreateKey(RegistryRoot root, std::string_view subKey) {
  Recheck();
  if (HasKey(root, subKey)) return true;
  const auto path = OwnPath(root, subKey);
  return path && Change([&](RegistryKey& own) { return own.Make(*path) != nullptr; });
}

bool LinuxRegistry::RemoveKeys(RegistryRoot root, const std::vector<std::string>& subKeys) {
  Recheck();
  std::vector<std::string> paths;
  for (const auto& subKey : subKeys) {
    if (!HasKey(root, subKey)) continue;
    auto path = OwnPath(root, subKey);
    if (!path) return false;
    paths.push_back(std::move(*path));
  }
  return paths.empty() || Change([&](RegistryKey& own) {
           for (const auto& path : paths) own.Remove(path);
           return true;
         });
}

bool LinuxRegistry::HasSubKeys(RegistryRoot root, std::string_view subKey) const {
  const auto& tops = TopsOf(root);
  return std::any_of(tops.begin(), tops.end(), [&](const RegistryKey* top) {
    const auto* key = top->Find(subKey);
    return key != nullptr && !key->subKeys.empty();
  });
}

bool LinuxRegistry::SetValue(RegistryRoot root, std::string_view subKey, std::string_view name,
                             const RegistryValue& value) {
  return SetValues(root, {{std::string(subKey), std::string(name), value}});
}

bool LinuxRegistry::SetValues(RegistryRoot root, const std::vector<RegistryEntry>& entries) {
  Recheck();
  std::vector<std::string> paths;
  for (const auto& entry : entries) {
    auto path = OwnPath(root, entry.subKey);
    if (!path) return false;
    paths.push_back(std::move(*path));
  }
  return Change([&](RegistryKey& own) {
    for (std::size_t i = 0; i < entries.size(); ++i) {
      auto* key = own.Make(paths[i]);
      if (key == nullptr) return false;
      key->values.insert_or_assign(entries[i].name, entries[i].value);
    }
    return true;
  });
}

bool LinuxRegistry::Change(const std::function<bool(RegistryKey& own)>& change) {
  const auto lock = LockFile(own_.path + ".lock");
  if (!lock) return false;
  own_.Load();
  const bool done = own_.isReadable && change(own_.top) && Save();
  // Reading again gives the file's new stamp, and takes back what could not be saved.
  own_.Load();
  FindTops();
  return done;
}

bool LinuxRegistry::Save() {
  try {
    if (own_.senselessLines > 0) {
      ReplaceHostFile(own_.path + ".damaged", ReadHostFile(own_.path), kPrivate);
    }
    ReplaceHostFile(own_.path, WriteRegistryText(own_.top), kPrivate);
    return true;
  } catch (const std::system_error&) {
    return false;
  }
}

}  // namespace gorbex
