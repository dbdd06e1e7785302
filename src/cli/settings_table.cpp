#include "cli/settings_table.h"

#include "cli/text_output.h"
#include "core/text.h"
#include "platform/code_page.h"

namespace gorbex::cli {
namespace {

Setting Text(std::string_view name, std::string clsOptions::*property, bool stored = true) {
  return {name, stored, [property](const clsOptions& options) { return ToUtf8(options.*property); },
          [property](clsOptions& options, const std::string& text) { options.*property = text; }};
}

Setting Flag(std::string_view name, bool clsOptions::*property, bool stored = true) {
  return {name, stored, [property](const clsOptions& options) { return options.*property; },
          [property](clsOptions& options, const std::string& text) {
            options.*property = ToFlag(text);
          }};
}

template <class Whole>
Setting Number(std::string_view name, Whole clsOptions::*property) {
  return {name, true, [property](const clsOptions& options) { return options.*property; },
          [property](clsOptions& options, const std::string& text) {
            const std::int32_t value = TextToLong(text);
            options.*property = sizeof(Whole) == 2 ? ToInteger(value) : static_cast<Whole>(value);
          }};
}

// The property holds the word "True" or "False".
Setting DebugBuild() {
  return {"DebugBuild", true, [](const clsOptions& options) { return ToUtf8(options.DebugBuild); },
          [](clsOptions& options, const std::string& text) {
            options.DebugBuild = FlagText(ToFlag(text));
          }};
}

}  // namespace

const std::vector<Setting>& AllSettings() {
  static const std::vector<Setting> kSettings = {
      Text("VersionComponents", &clsOptions::VersionComponents, false),
      DebugBuild(),
      Text("AutoLaunchName", &clsOptions::AutoLaunchName),
      Flag("AutoLaunchVBP", &clsOptions::AutoLaunchVBP),
      Text("WatchFolder", &clsOptions::WatchFolder),
      Flag("AutoBuildDependant", &clsOptions::AutoBuildDependant),
      Text("ReplyUser", &clsOptions::ReplyUser),
      Number("ReplyTo", &clsOptions::ReplyTo),
      Flag("WatchSource", &clsOptions::WatchSource, false),
      Text("BuildPath", &clsOptions::BuildPath),
      Flag("StopProcessing", &clsOptions::StopProcessing),
      Flag("ChangeRefs", &clsOptions::ChangeRefs),
      Flag("Compatible", &clsOptions::Compatible),
      Flag("GetLatest", &clsOptions::GetLatest),
      Flag("AutoStart", &clsOptions::AutoStart),
      Number("Interval", &clsOptions::Interval)};
  return kSettings;
}

std::string Shown(const Setting& setting, const clsOptions& options) {
  const auto value = setting.Get(options);
  if (!value.is_string()) return value.dump();
  return Plain(FromUtf8(value.get<std::string>()).value_or(""));
}

const Setting* FindSetting(std::string_view name) {
  for (const Setting& setting : AllSettings()) {
    if (EqualsIgnoringCase(setting.name, name)) return &setting;
  }
  return nullptr;
}

}  // namespace gorbex::cli
