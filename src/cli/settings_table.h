#pragma once

#include <functional>
#include <nlohmann/json.hpp>
#include <string>
#include <string_view>
#include <vector>

#include "core/options.h"

namespace gorbex::cli {

/// One property of the settings object, as users name it.
struct Setting {
  std::string_view name;
  bool stored = true;  ///< false for what lasts only while the program runs
  std::function<nlohmann::ordered_json(const clsOptions&)> Get;

  /// Takes the value from a text of the program. Errors: 13 not a value of the property, 6 too
  /// large.
  std::function<void(clsOptions&, const std::string&)> Set;
};

[[nodiscard]] const std::vector<Setting>& AllSettings();

/// The value for a reader.
[[nodiscard]] std::string Shown(const Setting& setting, const clsOptions& options);

/// Null when there is no such setting; letter case does not matter.
[[nodiscard]] const Setting* FindSetting(std::string_view name);

}  // namespace gorbex::cli
