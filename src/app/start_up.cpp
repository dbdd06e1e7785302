#include "app/start_up.h"

#include <utility>

#include "app/window_place.h"
#include "core/node_key.h"
#include "scc/session_settings.h"

namespace gorbex {
namespace {

constexpr std::string_view kCompilerKey =
    "HKEY_CLASSES_ROOT\\VisualBasic.Project\\shell\\open\\command";

}  // namespace

std::string CompilerOf(const std::string& registeredCommand) {
  if (registeredCommand.size() < 2) return {};
  const auto quote = registeredCommand.find('"', 2);
  return registeredCommand.substr(1, quote == std::string::npos ? quote : quote - 1);
}

std::string StartUp::RegisteredCompiler() const {
  return uses_.registry.fnsGetRegistryValue(kCompilerKey, "");
}

void StartUp::ReadSession() {
  uses_.window.IniPath = uses_.registry.fnsGetRegistryValue(kProgramKey, session_setting::kIniPath);
  uses_.window.UserName = uses_.registry.fnsGetRegistryValue(kProgramKey, session_setting::kUser);
}

// The note of another program that is at work is not ours to touch.
void StartUp::WriteBackReplacedValues() {
  if (uses_.replaced.Any()) static_cast<void>(uses_.takeTurn());
}

void StartUp::ReadState() {
  WriteBackReplacedValues();
  ReadSession();
  uses_.window.compilerPath = CompilerOf(RegisteredCompiler());
  uses_.options.LoadSettings();
  uses_.window.ClearBuildProject();
}

void StartUp::Form_Load() {
  frmBuilder& window = uses_.window;
  Procedure(uses_.report, ": frmBuilder.Form_Load").Run([&](Procedure& on) {
    on([&] { uses_.log.WriteLog("Application Started"); });
    TellOfReplacedValues(on);
    on([&] { uses_.buildProject.ShowRecentFiles(); });
    RestorePosition(on);
    on([&] { ReadSession(); });
    const std::string registered = on([&] { return RegisteredCompiler(); });
    // At a later run the tree has its root already.
    if (window.tvwProjects.Find(kRootKey) == nullptr) on([&] { window.ClearBuildProject(); });
    const std::string commandLine = std::exchange(commandLine_, {});
    if (commandLine == "show") {
      on([&] {
        uses_.dialogs.Show(
            {"Registry VB Path details " + std::string(kCompilerKey) + "\r\n" + registered});
      });
    }
    FindCompiler(on, registered);
    on([&] { uses_.options.LoadSettings(); });
    if (!commandLine.empty() && commandLine != "show") OpenNamedProject(on, commandLine);
    uses_.options.LimitInterval();
    on([&] { window.tmrOutlook.interval.Set(uses_.options.TimerInterval()); });
    // At a later run the service may be on already, and the command would switch it off.
    Command& inBox = window.menu.mnuToolsInBox;
    if (uses_.options.AutoStart && !inBox.checked.Get()) on([&] { inBox.Execute(); });
  });
}

void StartUp::TellOfReplacedValues(Procedure& on) {
  std::string lines;
  const Subscription listening = uses_.replaced.told.Connect(
      [&](const std::string& line) { lines.append(lines.empty() ? "" : kLineBreak).append(line); });
  on([&] { WriteBackReplacedValues(); });
  if (!lines.empty()) on([&] { uses_.dialogs.Show({lines}); });
}

// A later run must not move the window away from where the user put it since.
void StartUp::RestorePosition(Procedure& on) {
  if (uses_.window.position.Get()) return;
  const std::string stored =
      on([&] { return uses_.registry.fnsGetRegistryValue(kPositionKey, kPositionValue); });
  if (!stored.empty()) on([&] { uses_.window.position.Set(PositionFrom(stored)); });
}

void StartUp::FindCompiler(Procedure& on, const std::string& registered) {
  uses_.window.compilerPath = CompilerOf(registered);
  if (!uses_.window.compilerPath.empty()) return;
  const auto chosen = on([&] {
    return uses_.dialogs.OpenFile(
        {"Please enter path to Visual Basic executable file", "Executables (*.exe)|*.exe", ""});
  });
  if (chosen) {
    uses_.window.compilerPath = *chosen;
  } else {
    on([&] {
      uses_.dialogs.Show({"You must specify the VB path if you want to compile projects"});
    });
  }
}

void StartUp::OpenNamedProject(Procedure& on, const std::string& commandLine) {
  if (on([&] { return FileExists(uses_.files, commandLine); })) {
    on([&] { uses_.buildProject.OpenProject(commandLine); });
  } else {
    on([&] { uses_.dialogs.Show({"Could not open " + commandLine + " project"}); });
  }
}

}  // namespace gorbex
