#include "build/build_settings.h"

#include <algorithm>

#include "build/destination.h"
#include "build/options_dialog.h"
#include "core/text.h"

namespace gorbex {
namespace {

constexpr std::int32_t kLongestInterval = 60;

}  // namespace

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
    options_.Interval = std::min(options_.Interval, kLongestInterval);
    on([&] { window_.tmrOutlook.interval.Set(ToLong(options_.Interval * 1000.0)); });
  });
}

void BuildSettings::ShowOptions() {
  frmOptions form;
  OptionsDialog dialog(form, options_, dialogs_, report_);
  dialog.Form_Load();
  dialogs_.ShowOptions(form);
}

}  // namespace gorbex
