#include "platform/windows/host.h"

#include <windows.h>

#include <array>
#include <utility>

#include "platform/runtime_error.h"
#include "platform/windows/automation_objects.h"
#include "platform/windows/child_process.h"
#include "platform/windows/clock.h"
#include "platform/windows/component_inspector.h"
#include "platform/windows/file_system.h"
#include "platform/windows/full_path.h"
#include "platform/windows/handle.h"
#include "platform/windows/outlook.h"
#include "platform/windows/process.h"
#include "platform/windows/program_folder.h"
#include "platform/windows/program_lock.h"
#include "platform/windows/registry.h"
#include "platform/windows/source_control.h"
#include "platform/windows/system_code_page.h"
#include "platform/windows/tool.h"
#include "platform/windows/wide_text.h"

namespace gorbex {
namespace {

// Whether this program has the rights that an administrator's programs can have.
bool IsElevated() {
  HANDLE token = nullptr;
  if (OpenProcessToken(GetCurrentProcess(), TOKEN_QUERY, &token) == 0) return false;
  const Handle owned(token);
  TOKEN_ELEVATION elevation{};
  DWORD size = 0;
  return GetTokenInformation(token, TokenElevation, &elevation, sizeof(elevation), &size) != 0 &&
         elevation.TokenIsElevated != 0;
}

std::string RegistrationAdvice() {
  if (IsElevated()) return {};
  return "Registering nearly always needs administrator rights: start the program as "
         "administrator";
}

using Locks = std::array<std::shared_ptr<void>, 2>;

}  // namespace

struct WindowsHost::Parts {
  [[nodiscard]] std::shared_ptr<void> KeepOthersOut(const std::string& product) const {
    std::shared_ptr<void> here = ProgramLock::Try(ProgramLock::ToBuild(programFolder));
    if (here == nullptr || product.empty()) return here;
    std::shared_ptr<void> there = ProgramLock::TryProduct(product);
    return there == nullptr ? nullptr : std::make_shared<Locks>(Locks{here, there});
  }

  std::string programFolder = SpelledFolder(OwnFolder());
  WindowsFileSystem files;
  WindowsRegistry registry;
  WindowsProcessLauncher processes{programFolder};
  WindowsClock clock;
  WindowsComponentInspector components{files};
  std::unique_ptr<ComponentObjects> objects;
  WindowsToolRunner tools;
  WindowsSourceControl sourceControl{tools, files, OwnProgram()};
  Outlook mail{files};
};

WindowsHost::WindowsHost(std::unique_ptr<ComponentObjects> objects) {
  CodePage::Use(SystemCodePage());
  parts_ = std::make_unique<Parts>();
  parts_->objects = objects ? std::move(objects) : std::make_unique<AutomationObjects>();
  // A drive without a disk is an error for the caller, not a question of the system's own.
  SetErrorMode(SEM_FAILCRITICALERRORS);
}

WindowsHost::~WindowsHost() = default;

PlatformServices WindowsHost::Services(EventPump& events) {
  parts_->tools.Handle(events);
  parts_->sourceControl.Handle(events);
  parts_->mail.Handle(events);
  return {parts_->files,
          parts_->registry,
          parts_->processes,
          parts_->clock,
          events,
          parts_->components,
          *parts_->objects,
          parts_->sourceControl,
          parts_->mail,
          parts_->programFolder,
          [this](const std::string& product) { return parts_->KeepOthersOut(product); },
          RegistrationAdvice()};
}

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

std::shared_ptr<void> WindowsHost::ChangeAlone(const std::function<void()>& onWait) {
  const auto lock = ProgramLock::ToChange(parts_->programFolder);
  return std::make_shared<ProgramLock>(lock, onWait);
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

std::string OwnProgram() {
  return Utf8FromWide(OwnFile());
}

}  // namespace gorbex
