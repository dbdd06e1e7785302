#include "cli/settings_table.h"

#include <variant>

#include "cli/text_output.h"
#include "platform/code_page.h"

namespace gorbex::cli {

std::vector<std::string> SettingNames() {
  std::vector<std::string> names;
  for (const Setting& setting : AllSettings()) {
    if (!setting.stored.empty()) names.emplace_back(setting.name);
  }
  names.insert(names.end(), kOtherSettings.begin(), kOtherSettings.end());
  return names;
}

nlohmann::ordered_json SettingJson(const Setting& setting, const clsOptions& options) {
  const Setting::Member& member = setting.member;
  if (const auto* flag = std::get_if<bool clsOptions::*>(&member)) return options.**flag;
  if (const auto* small = std::get_if<std::int16_t clsOptions::*>(&member)) return options.**small;
  if (const auto* large = std::get_if<std::int32_t clsOptions::*>(&member)) return options.**large;
  if (std::holds_alternative<Setting::Jobs>(member)) return options.Jobs;
  return ToUtf8(setting.Text(options));
}

std::string Shown(const Setting& setting, const clsOptions& options) {
  const auto value = SettingJson(setting, options);
  return value.is_string() ? Plain(setting.Text(options)) : value.dump();
}

}  // namespace gorbex::cli
