#pragma once

#include <charconv>
#include <cstdint>
#include <optional>
#include <string>
#include <string_view>
#include <vector>

namespace gorbex {

inline constexpr std::string_view kWhiteSpace = " \t\r\n";

/// A part of the text: what is left without the blanks at its beginning and end.
[[nodiscard]] std::string_view Trimmed(std::string_view text,
                                       std::string_view blanks = kWhiteSpace);

/// The fields between the separators; an empty text has no fields.
[[nodiscard]] std::vector<std::string_view> Split(std::string_view text, char separator);

[[nodiscard]] std::string Joined(const std::vector<std::string>& texts,
                                 std::string_view separator = ", ");

/// A text that is one number from end to end; nothing for any other, and for one too large.
template <class Number>
[[nodiscard]] std::optional<Number> WholeNumber(std::string_view text, int base = 10) {
  Number number{};
  const char* const last = text.data() + text.size();
  const auto [end, error] = std::from_chars(text.data(), last, number, base);
  return error == std::errc() && end == last ? std::optional(number) : std::nullopt;
}

/// The number in hexadecimal, in small letters and without leading zeros.
[[nodiscard]] std::string Hexadecimal(std::uint64_t number);

/// A part of a URL with each "%41" replaced by its byte; nothing when a "%" lacks its two
/// hexadecimal digits.
[[nodiscard]] std::optional<std::string> PercentDecoded(std::string_view text);

/// A text of the program for a terminal or a plain file: UTF-8, LF line ends, no control
/// characters.
[[nodiscard]] std::string Plain(std::string_view text);

/// The same for XML and HTML, between tags or in an attribute.
[[nodiscard]] std::string MarkupText(std::string_view text);

/// The same for a text without control characters that is UTF-8 already.
[[nodiscard]] std::string MarkupUtf8(std::string_view utf8);

}  // namespace gorbex
