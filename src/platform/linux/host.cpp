#include "platform/linux/host.h"

#include <cstdlib>

#include "platform/linux/end_signal.h"
#include "platform/linux/program_lock.h"
#include "platform/linux/typed_path.h"
#include "platform/runtime_error.h"

namespace gorbex {

LinuxHost::LinuxHost(const std::optional<std::string>& prefix)
    : platform_(Prefix::Choose(prefix, Environment)) {}

std::string LinuxHost::TypedPath(const std::string& typed) const {
  return ProgramPathOf(platform_.GetPrefix(), typed);
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
  return platform_.GetPrefix().Existing(programPath).value_or("");
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
