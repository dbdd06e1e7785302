#pragma once

#include <chrono>
#include <string>
#include <string_view>

#include "platform/plain_text.h"

namespace gorbex::cli {

/// The lines of a text below a heading: indented, without empty ones.
[[nodiscard]] std::string Indented(std::string_view text);

/// Seconds with two decimals, such as "0.42 s".
[[nodiscard]] std::string Seconds(std::chrono::milliseconds duration);

/// The number of columns that a text takes on a terminal.
[[nodiscard]] std::size_t Width(std::string_view utf8);

/// The text, filled up with blanks to a width in characters.
[[nodiscard]] std::string Padded(std::string utf8, std::size_t width);

/// The file name of a Windows path, in UTF-8.
[[nodiscard]] std::string FileName(std::string_view path);

}  // namespace gorbex::cli
