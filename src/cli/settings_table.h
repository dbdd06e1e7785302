#pragma once

#include <array>
#include <nlohmann/json.hpp>
#include <string>
#include <vector>

#include "core/options.h"
#include "core/setting.h"
#include "mail/mail_settings.h"
#include "scc/session_settings.h"

namespace gorbex::cli {

/// Stored beside the settings of the settings object, which does not know them.
inline constexpr std::array kOtherSettings{
    session_setting::kIniPath,    session_setting::kUser, mail_setting::kStore,
    mail_setting::kTransport,     mail_setting::kFrom,    mail_setting::kTokenCommand,
    mail_setting::kAllowedSenders};

/// The names of all settings that can be shown and changed.
[[nodiscard]] std::vector<std::string> SettingNames();

/// The value for a program.
[[nodiscard]] nlohmann::ordered_json SettingJson(const Setting& setting, const clsOptions& options);

/// The value for a reader.
[[nodiscard]] std::string Shown(const Setting& setting, const clsOptions& options);

}  // namespace gorbex::cli
