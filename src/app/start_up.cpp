#include "app/start_up.h"

#include "app/stored_position.h"
#include "core/text.h"
#include "scc/session_settings.h"

namespace gorbex {

void StartUp::ReadSession() {
  uses_.window.IniPath = uses_.registry.fnsGetRegistryValue(kProgramKey, session_setting::kIniPath);
  uses_.window.UserName = uses_.registry.fnsGetRegistryValue(kProgramKey, session_setting::kUser);
  uses_.window.isSessionRead = true;
}

// The note of another program that is at work is not ours to touch.
void StartUp::WriteBackReplacedValues() {
  if (uses_.replaced.Any()) static_cast<void>(uses_.work.TakeTurn());
}

bool StartUp::ReadState() {
  WriteBackReplacedValues();
  ReadSession();
  uses_.compiler.TakeRegistered();
  uses_.window.ClearBuildProject();
  return uses_.options.LoadSettings();
}

void StartUp::Form_Load() {
  frmBuilder& window = uses_.window;
  Procedure(uses_.report, ": frmBuilder.Form_Load").Run([&](Procedure& on) {
    on([&] { uses_.log.WriteLog("Application Started"); });
    TellOfReplacedValues(on);
    on([&] { uses_.buildProject.ShowRecentFiles(); });
    RestorePosition(on);
    on([&] { ReadSession(); });
    on([&] { window.ClearBuildProject(); });
    if (commandLine_ == "show") on([&] { ShowCompilerDetails(); });
    on([&] { uses_.compiler.Find(); });
    on([&] { uses_.options.LoadSettings(); });
    if (!commandLine_.empty() && commandLine_ != "show") OpenNamedProject(on);
    uses_.options.LimitInterval();
    on([&] { window.tmrOutlook.interval.Set(uses_.options.TimerInterval()); });
    if (uses_.options.AutoStart) on([&] { window.menu.mnuToolsInBox.Execute(); });
  });
}

void StartUp::TellOfReplacedValues(Procedure& on) {
  std::string lines;
  const Subscription listening = uses_.replaced.told.Connect(
      [&](const std::string& line) { lines.append(lines.empty() ? "" : kLineBreak).append(line); });
  on([&] { WriteBackReplacedValues(); });
  if (!lines.empty()) on([&] { uses_.dialogs.Show({lines}); });
}

void StartUp::RestorePosition(Procedure& on) {
  const std::string stored =
      on([&] { return uses_.registry.fnsGetRegistryValue(kPositionKey, kPositionValue); });
  if (!stored.empty()) on([&] { uses_.window.position.Set(PositionFrom(stored)); });
}

void StartUp::ShowCompilerDetails() {
  std::string text = "Registry VB Path details ";
  text.append(CompilerPath::kKey).append(kLineBreak).append(uses_.compiler.RegisteredCommand());
  uses_.dialogs.Show({text});
}

void StartUp::OpenNamedProject(Procedure& on) {
  if (on([&] { return FileExists(uses_.files, commandLine_); })) {
    on([&] { uses_.buildProject.OpenProject(commandLine_); });
  } else {
    on([&] { uses_.dialogs.Show({"Could not open " + commandLine_ + " project"}); });
  }
}

}  // namespace gorbex
