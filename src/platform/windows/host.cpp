#include "platform/windows/host.h"

#include "platform/code_page.h"
#include "platform/runtime_error.h"
#include "platform/windows/child_process.h"
#include "platform/windows/end_signal.h"
#include "platform/windows/full_path.h"
#include "platform/windows/program_lock.h"
#include "platform/windows/wide_text.h"

namespace gorbex {

std::string WindowsHost::TypedPath(const std::string& typed) const {
  const auto text = FromUtf8(typed);
  const auto full = text ? FullPathOf(*text) : std::nullopt;
  const auto path = full ? FromWide(*full) : std::nullopt;
  if (!path) throw RuntimeError(ErrorNumber::BadFileName);
  return *path;
}

std::optional<std::string> WindowsHost::ProgramPath(const std::string& hostPath) const {
  try {
    return TypedPath(hostPath);
  } catch (const RuntimeError&) {
    return std::nullopt;
  }
}

std::string WindowsHost::HostPath(const std::string& programPath) const {
  return ToUtf8(programPath);
}

std::shared_ptr<void> WindowsHost::ChangeAlone(const std::function<void()>& onWait) {
  const auto lock = ProgramLock::ToChange(platform_.ProgramFolder());
  return std::make_shared<ProgramLock>(lock, onWait);
}

void WindowsHost::ListenForEnd() {
  EndSignal::Listen();
}

bool WindowsHost::EndWanted() const {
  return EndSignal::Wanted();
}

void WindowsHost::Wait(std::chrono::milliseconds time) {
  EndSignal::Wait(time);
}

std::optional<std::string> Environment(const char* name) {
  const auto value = EnvironmentVariable(WideFromUtf8(name).c_str());
  if (!value || value->empty()) return std::nullopt;
  return Utf8FromWide(*value);
}

std::string TakeFromEnvironment(const char* name) {
  std::string value = Environment(name).value_or("");
  SetEnvironmentVariableW(WideFromUtf8(name).c_str(), nullptr);
  return value;
}

}  // namespace gorbex
