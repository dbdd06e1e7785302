#pragma once

#include <array>
#include <optional>
#include <string>
#include <string_view>

#include "platform/runtime_error.h"

namespace gorbex {

/// A single-byte code page: the characters of ASCII, and 128 others.
///
/// Every text inside the program is bytes of the one code page that the process uses. That is
/// Windows-1252 until the program's start has chosen the system's.
class CodePage {
 public:
  /// The Unicode numbers of the bytes from 0x80 on.
  using UpperHalf = std::array<char16_t, 128>;

  explicit CodePage(const UpperHalf& upperHalf);

  [[nodiscard]] static CodePage Windows1252();
  [[nodiscard]] static const CodePage& Used() { return used_; }

  /// Makes it the code page of the process. Only for the start, before any text is made: texts of
  /// different code pages cannot be compared.
  static void Use(const CodePage& page) { used_ = page; }

  /// The Unicode number of a byte, and the byte of a Unicode number (nothing when it has none).
  [[nodiscard]] char32_t Character(char byte) const {
    return tables_.characters[static_cast<unsigned char>(byte)];
  }
  [[nodiscard]] std::optional<char> Byte(char32_t character) const;

  [[nodiscard]] char Lower(char byte) const {
    return tables_.lowerCase[static_cast<unsigned char>(byte)];
  }
  [[nodiscard]] char Upper(char byte) const {
    return tables_.upperCase[static_cast<unsigned char>(byte)];
  }

 private:
  struct Tables {
    std::array<char16_t, 256> characters{};
    std::array<char, 256> lowerCase{};
    std::array<char, 256> upperCase{};
  };

  explicit constexpr CodePage(const Tables& tables) : tables_(tables) {}
  static constexpr Tables TablesOf(const UpperHalf& upperHalf);

  static CodePage used_;

  Tables tables_;
};

/// The error for a system whose code page, of this number, has characters of several bytes.
[[nodiscard]] RuntimeError UnusableCodePage(const std::string& number);

// Case and conversion at the borders are answered here and nowhere else, by the code page in use.

[[nodiscard]] inline char LowerCase(char letter) {
  return CodePage::Used().Lower(letter);
}
[[nodiscard]] std::string LowerCase(std::string_view text);
[[nodiscard]] std::string UpperCase(std::string_view text);
[[nodiscard]] bool EqualsIgnoringCase(std::string_view a, std::string_view b);

/// Such bytes are the same in every code page and in UTF-8.
[[nodiscard]] bool IsAscii(std::string_view text);

[[nodiscard]] bool IsUtf8(std::string_view text);

/// The text as one line: with a blank for every control character.
[[nodiscard]] std::string OnOneLine(std::string_view text);

/// The bytes that the code page leaves undefined become the control character of equal number.
[[nodiscard]] std::string ToUtf8(std::string_view text);

/// Nothing when the text is not valid UTF-8 or holds a character the code page lacks.
[[nodiscard]] std::optional<std::string> FromUtf8(std::string_view utf8);

/// As FromUtf8, with a "?" for everything that the code page cannot hold.
[[nodiscard]] std::string FromUtf8Roughly(std::string_view utf8);

/// The Unicode number of one byte, and the byte of one Unicode number (nothing when it has none).
[[nodiscard]] inline char32_t ToUnicode(char byte) {
  return CodePage::Used().Character(byte);
}
[[nodiscard]] std::optional<char> FromUnicode(char32_t character);

}  // namespace gorbex
