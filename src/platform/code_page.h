#pragma once

#include <cstddef>
#include <optional>
#include <string>
#include <string_view>

namespace gorbex {

// Every text inside the program is bytes of the system's single-byte code page (Windows-1252).
// Case and conversion at the borders are answered here and nowhere else.

[[nodiscard]] char LowerCase(char letter);
[[nodiscard]] std::string LowerCase(std::string_view text);
[[nodiscard]] std::string UpperCase(std::string_view text);
[[nodiscard]] bool EqualsIgnoringCase(std::string_view a, std::string_view b);

/// The bytes that the code page leaves undefined become the control character of equal number.
[[nodiscard]] std::string ToUtf8(std::string_view text);

/// Nothing when the text is not valid UTF-8 or holds a character the code page lacks.
[[nodiscard]] std::optional<std::string> FromUtf8(std::string_view utf8);

/// The Unicode number of one byte, and the byte of one Unicode number (nothing when it has none).
[[nodiscard]] char32_t ToUnicode(char byte);
[[nodiscard]] std::optional<char> FromUnicode(char32_t character);

}  // namespace gorbex
