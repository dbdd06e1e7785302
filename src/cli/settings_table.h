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

/// Kept beside those of the settings object, and of no concern to it.
inline constexpr std::array kOtherSettings{
    session_setting::kIniPath,    session_setting::kUser, mail_setting::kStore,
    mail_setting::kTransport,     mail_setting::kFrom,    mail_setting::kTokenCommand,
    mail_setting::kAllowedSenders};

/// Of all that can be shown and changed.
[[nodiscard]] std::vector<std::string> SettingNames();

/// The value for a program.
[[nodiscard]] nlohmann::ordered_json SettingJson(const Setting& setting, const clsOptions& options);

/// The value for a reader.
[[nodiscard]] std::string Shown(const Setting& setting, const clsOptions& options);

}  // namespace gorbex::cli
