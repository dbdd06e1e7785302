#pragma once

#include <string_view>

namespace gorbex::session_setting {

// Values of the program's registry key that the next login begins with.

/// The initialisation file, a Windows path.
inline constexpr std::string_view kIniPath = "INIPath";

/// The user of the last login.
inline constexpr std::string_view kUser = "User";

}  // namespace gorbex::session_setting
