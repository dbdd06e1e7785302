#include "platform/linux/platform.h"

#include <array>

#include "platform/git/source_control.h"
#include "platform/linux/clock.h"
#include "platform/linux/component_inspector.h"
#include "platform/linux/file_system.h"
#include "platform/linux/host_file.h"
#include "platform/linux/mail/mail.h"
#include "platform/linux/plugin_objects.h"
#include "platform/linux/process.h"
#include "platform/linux/program_lock.h"
#include "platform/linux/registrar.h"
#include "platform/linux/registry.h"
#include "platform/linux/system_code_page.h"
#include "platform/linux/tool.h"
#include "platform/linux/wine.h"
#include "platform/runtime_error.h"

namespace gorbex {
namespace {

constexpr const char* kProgramFolder = "C:\\Program Files\\GorbexBuilder";

// The prefix has made the program's folder.
Outbox::Uses OutboxOf(const Prefix& prefix) {
  const auto folder = prefix.Existing(kProgramFolder);
  if (!folder.has_value()) throw RuntimeError(ErrorNumber::PathNotFound, kProgramFolder);
  return {std::filesystem::path(*folder) / "Outbox",
          [](const auto& file, const auto& bytes) { ReplaceHostFile(file, bytes, 0600); },
          &ProgramLock::Try};
}

using Locks = std::array<std::shared_ptr<void>, 2>;

}  // namespace

struct LinuxPlatform::Parts {
  explicit Parts(const std::filesystem::path& root) : prefix(root) {
    LookAtRegistry(false);
    registry.RequireReadable();
  }

  // A folder that is not there can be nobody's.
  std::shared_ptr<void> KeepOthersOut(const std::string& product) {
    std::shared_ptr<void> here = ProgramLock::Try(ProgramLock::ToBuild(prefix.Root()));
    const auto folder = product.empty() ? std::nullopt : prefix.Existing(product);
    if (here == nullptr || !folder) return here;
    std::shared_ptr<void> there = ProgramLock::TryProduct(*folder);
    return there == nullptr ? nullptr : std::make_shared<Locks>(Locks{here, there});
  }

  // A native program may have run others under Wine.
  void LookAtRegistry(bool isBehind) {
    if (isBehind || IsWineRunning(prefix)) {
      registry.RecheckWine();
    } else {
      registry.Recheck();
    }
  }

  Prefix prefix;
  LinuxFileSystem files{prefix};
  LinuxRegistry registry{prefix.Root(),
                         [this](const std::string& key) { return ExportWineKey(prefix, key); }};
  Registrar registrar{files, registry};
  LinuxProcessLauncher processes{prefix, kProgramFolder,
                                 [this](bool underWine) { LookAtRegistry(underWine); },
                                 [this](std::string_view arguments) {
                                   return static_cast<std::uint32_t>(registrar.Run(arguments));
                                 }};
  LinuxClock clock;
  LinuxComponentInspector components{files};
  PluginObjects objects{registry, prefix};
  LinuxToolRunner tools{prefix};
  GitSourceControl sourceControl{tools, files, OwnProgram(), [this](const std::string& hostPath) {
                                   return prefix.WindowsPath(hostPath);
                                 }};
  LinuxMail mail{files, tools, OutboxOf(prefix)};
};

LinuxPlatform::LinuxPlatform(const std::filesystem::path& prefixRoot) {
  CodePage::Use(SystemCodePage(prefixRoot));
  parts_ = std::make_unique<Parts>(prefixRoot);
}

LinuxPlatform::~LinuxPlatform() = default;

const Prefix& LinuxPlatform::GetPrefix() const {
  return parts_->prefix;
}

PlatformServices LinuxPlatform::Services(EventPump& events) {
  parts_->tools.Handle(events);
  parts_->mail.Handle(events);
  return {parts_->files,
          parts_->registry,
          parts_->processes,
          parts_->clock,
          events,
          parts_->components,
          parts_->objects,
          parts_->sourceControl,
          parts_->mail,
          kProgramFolder,
          [this](const std::string& product) { return parts_->KeepOthersOut(product); }};
}

}  // namespace gorbex
