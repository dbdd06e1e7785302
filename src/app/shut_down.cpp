#include "app/shut_down.h"

#include "app/stored_position.h"
#include "scc/session_settings.h"

namespace gorbex {

bool ShutDown::Form_QueryUnload() {
  if (IsAtWork()) {
    AskToStop();
    return false;
  }
  wanted_ = false;
  bool closes = true;
  const bool finished =
      Procedure(uses_.report, ": frmBuilder.Form_QueryUnload").Run([&](Procedure& on) {
        closes = uses_.buildProject.OfferToSave(on);
        if (!closes) return;
        StoreState(on);
        on([&] { uses_.log.WriteLog("Quitting Application"); });
      });
  return closes || !finished;
}

// The run that is ended does its own clean-up only after this call, which may be too late.
void ShutDown::SessionEnds() {
  const bool builds = uses_.work.Goes(Task::Run);
  uses_.run.End();
  if (builds) uses_.replaced.WriteBack();
  Procedure::IgnoringErrors().Run([&](Procedure& on) {
    StoreState(on);
    on([&] { uses_.log.WriteLog("Quitting Application"); });
  });
}

void ShutDown::AskToStop() {
  if (wanted_) {
    uses_.run.mnuFileStop_Click();
    return;
  }
  const Answer answer = uses_.dialogs.Show(
      {uses_.work.Builds()
           ? "A build is running. Do you wish to close when the current project is done?"
           : "Source-Control is busy. Do you wish to close when it is done?",
       Buttons::YesNo, MessageIcon::Question});
  if (answer != Answer::Yes) return;
  wanted_ = true;
  // A lone program is given its time; the next attempt offers to end it.
  if (uses_.work.Goes(Task::Run)) {
    uses_.run.mnuFileStop_Click();
  } else {
    uses_.work.StopAfterThis();
  }
}

void ShutDown::StoreState(Procedure& on) {
  const frmBuilder& window = uses_.window;
  // An aborted start has not read everything, and what was never read must not be lost.
  const auto store = [&](std::string_view name, const std::string& value) {
    if (!window.isSessionRead && value.empty()) return;
    on([&] { uses_.registry.subSetRegistryValue(kProgramKey, name, value); });
  };
  store(session_setting::kIniPath, window.IniPath);
  store(session_setting::kUser, window.UserName);
  on([&] { uses_.options.SaveSettings(); });
  const auto& position = window.position.Get();
  if (!position) return;
  on([&] {
    uses_.registry.subSetRegistryValue(kPositionKey, kPositionValue, PositionText(*position));
  });
}

void ShutDown::mnuFileExit_Click() {
  Procedure(uses_.report, ": frmBuilder.mnuFileExit_Click").Do([&] {
    uses_.window.closeRequested.Emit();
  });
}

}  // namespace gorbex
