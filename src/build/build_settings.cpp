#include "build/build_settings.h"

#include "build/options_dialog.h"
#include "core/text.h"

namespace gorbex {

std::optional<std::string> AskForDestination(Dialogs& dialogs) {
  const auto folder = dialogs.BrowseForDir("Please specify a destination path");
  if (!folder || folder->empty() || folder->ends_with('\\')) return std::nullopt;
  return *folder + "\\";
}

void BuildSettings::mnuToolsBuildPath_Click() {
  Procedure(report_, ": frmBuilder.mnuToolsBuildPath_Click").Run([&](Procedure& on) {
    const auto folder = on([&] { return AskForDestination(dialogs_); });
    if (!folder) return;
    window_.buildDirectory = *folder;
    on([&] { window_.SetStatus("Building to " + *folder); });
  });
}

std::optional<std::string> BuildSettings::AskForVersion() {
  std::string prompt = "Enter version number for components in this build (x.x.x).";
  prompt.append(kLineBreak).append("Enter nothing for project default version.");
  return dialogs_.Input(prompt, options_.VersionComponents);
}

void BuildSettings::mnuToolsVersion_Click() {
  Procedure(report_, ": frmBuilder.mnuToolsVersion_Click").Run([&](Procedure& on) {
    const auto version = on([&] { return AskForVersion(); });
    if (!version) return;
    const bool isVersion = version->find('.') != std::string::npos;
    options_.VersionComponents = isVersion ? *version : std::string();
  });
}

void BuildSettings::mnuToolsBuildOptions_Click() {
  Procedure(report_, ": frmBuilder.mnuToolsBuildOptions_Click").Run([&](Procedure& on) {
    on([&] { ShowOptions(); });
    window_.buildDirectory = options_.BuildPath;
    // The dialog has stored the longer one already.
    if (options_.LimitInterval()) on([&] { options_.SaveSettings(); });
    on([&] { window_.tmrOutlook.interval.Set(options_.TimerInterval()); });
  });
}

void BuildSettings::ShowOptions() {
  frmOptions form;
  OptionsDialog dialog(form, options_, dialogs_, report_);
  dialog.Form_Load();
  dialogs_.ShowOptions(form);
}

}  // namespace gorbex
