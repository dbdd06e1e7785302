#include "platform/windows/platform.h"

#include <windows.h>

#include <array>
#include <utility>

#include "platform/windows/automation_objects.h"
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

struct WindowsPlatform::Parts {
  explicit Parts(std::unique_ptr<ComponentObjects> componentObjects)
      : objects(std::move(componentObjects)) {}

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
  WindowsSourceControl sourceControl{tools, files, Utf8FromWide(OwnFile())};
  Outlook mail{files};
};

WindowsPlatform::WindowsPlatform() : WindowsPlatform(std::make_unique<AutomationObjects>()) {}

WindowsPlatform::WindowsPlatform(std::unique_ptr<ComponentObjects> objects) {
  CodePage::Use(SystemCodePage());
  parts_ = std::make_unique<Parts>(std::move(objects));
  // A drive without a disk is an error for the caller, not a question of the system's own.
  SetErrorMode(SEM_FAILCRITICALERRORS);
}

WindowsPlatform::~WindowsPlatform() = default;

const std::string& WindowsPlatform::ProgramFolder() const {
  return parts_->programFolder;
}

PlatformServices WindowsPlatform::Services(EventPump& events) {
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

}  // namespace gorbex
