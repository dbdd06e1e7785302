#pragma once

#include <nlohmann/json.hpp>
#include <string>

#include "core/options.h"
#include "core/setting.h"

namespace gorbex::cli {

/// The value for a program.
[[nodiscard]] nlohmann::ordered_json SettingJson(const Setting& setting, const clsOptions& options);

/// The value for a reader.
[[nodiscard]] std::string Shown(const Setting& setting, const clsOptions& options);

}  // namespace gorbex::cli
