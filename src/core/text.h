#pragma once

#include <cstddef>
#include <cstdint>
#include <string>
#include <string_view>
#include <vector>

#include "platform/plain_text.h"

namespace gorbex {

inline constexpr std::string_view kLineBreak = "\r\n";

[[nodiscard]] inline bool IsDigit(char letter) {
  return letter >= '0' && letter <= '9';
}

/// Only blanks are cut off; tabs and line ends are text.
[[nodiscard]] std::string_view TrimBlanks(std::string_view text);

/// The field at a 0-based index. Error 9 when there are fewer.
[[nodiscard]] std::string_view Field(const std::vector<std::string_view>& fields,
                                     std::size_t index);

[[nodiscard]] std::string WithoutQuotes(std::string_view text);

/// Position of the first occurrence at or after `from` without regard to letter case; npos when
/// there is none.
[[nodiscard]] std::size_t FindIgnoringCase(std::string_view text, std::string_view wanted,
                                           std::size_t from = 0);

/// Replaces every occurrence, in any letter case; an empty old text occurs nowhere.
void ReplaceIgnoringCase(std::string& text, std::string_view oldText, std::string_view newText);

[[nodiscard]] bool ContainsIgnoringCase(std::string_view text, std::string_view wanted);

/// The number at the start of a text: blanks skipped, sign, decimals, exponent, &H and &O; 0 when
/// there is none. Error 6 when it is too large for a double.
[[nodiscard]] double NumericValue(std::string_view text);

/// A double as a whole number, halves to even. Error 6 when it does not fit.
[[nodiscard]] std::int32_t ToLong(double value);
[[nodiscard]] std::int16_t ToInteger(double value);

/// A text that is a number from end to end as a whole number. Errors: 13 no number, 6 too large.
[[nodiscard]] std::int32_t TextToLong(std::string_view text);

/// A double in its shortest decimal form ("10", "1.5").
[[nodiscard]] std::string ShortestDecimal(double value);

/// "True" or "False" in any letter case, or a number (zero is false). Error 13 for anything else.
[[nodiscard]] bool ToFlag(std::string_view text);

/// "1 project uses it" or "38 projects use it".
[[nodiscard]] std::string Counted(std::size_t number, std::string_view one, std::string_view many);

/// A list for a message, one entry on each line; a long list is cut after the first entries, with
/// the number of the others.
[[nodiscard]] std::string ShortList(const std::vector<std::string>& entries);

/// The text, unless it is longer than `most` characters: then its beginning and its end, in whole
/// lines unless these are very long, and between them a line that tells how much is left out.
[[nodiscard]] std::string Shortened(std::string_view text, std::size_t most);

[[nodiscard]] inline std::string FlagText(bool flag) {
  return flag ? "True" : "False";
}

}  // namespace gorbex
