#pragma once

#include <array>
#include <cstddef>
#include <optional>
#include <string>
#include <string_view>

namespace gorbex {

// Every text inside the program is bytes of the system's single-byte code page (Windows-1252).
// Case and conversion at the borders are answered here and nowhere else.

/// The lower-case byte of every byte.
inline constexpr std::array<char, 256> kLowerCase = [] {
  std::array<char, 256> table{};
  for (unsigned i = 0; i < table.size(); ++i) {
    const bool isLetter = (i >= 'A' && i <= 'Z') || (i >= 0xC0 && i <= 0xDE && i != 0xD7);
    table[i] = static_cast<char>(isLetter ? i + 0x20 : i);
  }
  table[0x8A] = static_cast<char>(0x9A);
  table[0x8C] = static_cast<char>(0x9C);
  table[0x8E] = static_cast<char>(0x9E);
  table[0x9F] = static_cast<char>(0xFF);
  return table;
}();

[[nodiscard]] inline char LowerCase(char letter) {
  return kLowerCase[static_cast<unsigned char>(letter)];
}
[[nodiscard]] std::string LowerCase(std::string_view text);
[[nodiscard]] std::string UpperCase(std::string_view text);
[[nodiscard]] bool EqualsIgnoringCase(std::string_view a, std::string_view b);

/// Such bytes are the same in every code page and in UTF-8.
[[nodiscard]] bool IsAscii(std::string_view text);

/// The text with a blank for every control character: one line, whatever it held.
[[nodiscard]] std::string OnOneLine(std::string_view text);

/// The bytes that the code page leaves undefined become the control character of equal number.
[[nodiscard]] std::string ToUtf8(std::string_view text);

/// Nothing when the text is not valid UTF-8 or holds a character the code page lacks.
[[nodiscard]] std::optional<std::string> FromUtf8(std::string_view utf8);

/// The Unicode number of one byte, and the byte of one Unicode number (nothing when it has none).
[[nodiscard]] char32_t ToUnicode(char byte);
[[nodiscard]] std::optional<char> FromUnicode(char32_t character);

}  // namespace gorbex
