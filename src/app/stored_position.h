#pragma once

#include <string>
#include <string_view>

#include "core/main_window.h"

namespace gorbex {

/// Where the main window's position is kept: the four numbers of a WindowPosition joined with ",".
inline constexpr std::string_view kPositionKey =
    "HKEY_CURRENT_USER\\Software\\Tovarren\\GorbexBuilder\\WindowPos";
inline constexpr std::string_view kPositionValue = "Window";

/// Error 9 when there are fewer than four fields; a field that is not a number is 0.
[[nodiscard]] WindowPosition PositionFrom(std::string_view stored);
[[nodiscard]] std::string PositionText(const WindowPosition& position);

}  // namespace gorbex
