#pragma once

#include <optional>
#include <string>
#include <string_view>

namespace gorbex {

inline constexpr std::string_view kWhiteSpace = " \t\r\n";

/// A part of the text: what is left without the blanks at its beginning and end.
[[nodiscard]] std::string_view Trimmed(std::string_view text,
                                       std::string_view blanks = kWhiteSpace);

/// A part of a URL with each "%41" replaced by its byte; nothing when a "%" lacks its two
/// hexadecimal digits.
[[nodiscard]] std::optional<std::string> PercentDecoded(std::string_view text);

}  // namespace gorbex
