#include "platform/linux/host.h"

#include <algorithm>
#include <cstdlib>
#include <filesystem>
#include <string_view>
#include <system_error>

#include "platform/code_page.h"
#include "platform/linux/end_signal.h"
#include "platform/linux/program_lock.h"
#include "platform/runtime_error.h"

namespace gorbex {
namespace {

bool IsSeparator(char letter) {
  return letter == '\\' || letter == '/';
}

bool IsWindowsPath(const std::string& typed) {
  return typed.starts_with('\\') || (typed.size() > 2 && typed[1] == ':' && IsSeparator(typed[2]));
}

std::string WithSeparator(std::string path, char separator) {
  std::replace_if(path.begin(), path.end(), IsSeparator, separator);
  return path;
}

// The folder that a drive's link leads to, without a "/" at its end; the link itself when it leads
// nowhere.
std::string TargetOf(const std::string& link) {
  std::error_code error;
  const std::string target = std::filesystem::canonical(link, error).native();
  if (error) return link;
  return target == "/" ? "" : target;
}

}  // namespace

LinuxHost::LinuxHost(const std::optional<std::string>& prefix)
    : platform_(Prefix::Choose(prefix, Environment)) {}

std::string LinuxHost::TypedPath(const std::string& typed) const {
  // No file that the program can reach has a "\" in its name, so it separates here too.
  if (!IsWindowsPath(typed)) return platform_.GetPrefix().WindowsPath(WithSeparator(typed, '/'));
  const auto path = FromUtf8(WithSeparator(typed, '\\'));
  if (!path) throw RuntimeError(ErrorNumber::BadFileName);
  return *path;
}

std::optional<std::string> LinuxHost::ProgramPath(const std::string& hostPath) const {
  try {
    return platform_.GetPrefix().WindowsPath(hostPath);
  } catch (const RuntimeError&) {
    return std::nullopt;
  }
}

std::string LinuxHost::FirstFolder() const {
  return HostPath("C:\\");
}

std::string LinuxHost::HostPath(const std::string& programPath) const {
  constexpr std::string_view kLinks = "/dosdevices/";
  std::string path = platform_.GetPrefix().Existing(programPath).value_or("");
  const auto links = path.find(kLinks);
  if (links == std::string::npos) return path;
  const auto end = std::min(path.find('/', links + kLinks.size()), path.size());
  const auto [drive, isNew] = drives_.try_emplace(path.substr(0, end));
  if (isNew) drive->second = TargetOf(drive->first);
  return drive->second + (end == path.size() ? "/" : path.substr(end));
}

std::shared_ptr<void> LinuxHost::ChangeAlone(const std::function<void()>& onWait) {
  const auto lock = ProgramLock::ToChange(platform_.GetPrefix().Root());
  return std::make_shared<ProgramLock>(lock, onWait);
}

void LinuxHost::ListenForEnd() {
  static_cast<void>(EndSignal::Listen());
}

bool LinuxHost::EndWanted() const {
  return EndSignal::Wanted();
}

void LinuxHost::Wait(std::chrono::milliseconds time) {
  EndSignal::Wait(time);
}

std::optional<std::string> Environment(const char* name) {
  const char* value = std::getenv(name);
  return value == nullptr || *value == '\0' ? std::nullopt : std::optional<std::string>(value);
}

std::string TakeFromEnvironment(const char* name) {
  std::string value = Environment(name).value_or("");
  unsetenv(name);
  return value;
}

}  // namespace gorbex
