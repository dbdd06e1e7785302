#include "platform/linux/host.h"

#include <algorithm>
#include <array>
#include <cstdlib>
#include <filesystem>
#include <string_view>
#include <system_error>

#include "platform/code_page.h"
#include "platform/component/library_inspector.h"
#include "platform/git/source_control.h"
#include "platform/linux/clock.h"
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

struct LinuxHost::Parts {
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
  LibraryInspector components{files};
  PluginObjects objects{registry, prefix};
  LinuxToolRunner tools{prefix};
  GitSourceControl sourceControl{tools, files, OwnProgram(), [this](const std::string& hostPath) {
                                   return prefix.WindowsPath(hostPath);
                                 }};
  LinuxMail mail{files, tools, OutboxOf(prefix)};
};

LinuxHost::LinuxHost(const std::optional<std::string>& prefix) {
  const auto root = Prefix::Choose(prefix, Environment);
  CodePage::Use(SystemCodePage(root));
  parts_ = std::make_unique<Parts>(root);
}

LinuxHost::~LinuxHost() = default;

const Prefix& LinuxHost::GetPrefix() const {
  return parts_->prefix;
}

PlatformServices LinuxHost::Services(EventPump& events) {
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

std::string LinuxHost::TypedPath(const std::string& typed) const {
  // No file that the program can reach has a "\" in its name, so it separates here too.
  if (!IsWindowsPath(typed)) return parts_->prefix.WindowsPath(WithSeparator(typed, '/'));
  const auto path = FromUtf8(WithSeparator(typed, '\\'));
  if (!path) throw RuntimeError(ErrorNumber::BadFileName);
  return *path;
}

std::optional<std::string> LinuxHost::ProgramPath(const std::string& hostPath) const {
  try {
    return parts_->prefix.WindowsPath(hostPath);
  } catch (const RuntimeError&) {
    return std::nullopt;
  }
}

std::string LinuxHost::HostPath(const std::string& programPath) const {
  constexpr std::string_view kLinks = "/dosdevices/";
  std::string path = parts_->prefix.Existing(programPath).value_or("");
  const auto links = path.find(kLinks);
  if (links == std::string::npos) return path;
  const auto end = std::min(path.find('/', links + kLinks.size()), path.size());
  const auto [drive, isNew] = drives_.try_emplace(path.substr(0, end));
  if (isNew) drive->second = TargetOf(drive->first);
  return drive->second + (end == path.size() ? "/" : path.substr(end));
}

std::shared_ptr<void> LinuxHost::ChangeAlone(const std::function<void()>& onWait) {
  const auto lock = ProgramLock::ToChange(parts_->prefix.Root());
  return std::make_shared<ProgramLock>(lock, onWait);
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

std::string OwnProgram() {
  std::error_code error;
  const auto path = std::filesystem::read_symlink("/proc/self/exe", error);
  return error ? std::string() : path.native();
}

}  // namespace gorbex
