#pragma once

#include <optional>
#include <string>
#include <string_view>

namespace gorbex {

// The system's calls take UTF-16; inside the program every text is code-page bytes, and UTF-8 at
// its borders.

[[nodiscard]] std::wstring ToWide(std::string_view text);

/// Nothing when a character has no byte in the code page.
[[nodiscard]] std::optional<std::string> FromWide(std::wstring_view wide);

/// As FromWide, with a "?" for characters outside the code page.
[[nodiscard]] std::string FromWideRoughly(std::wstring_view wide);

/// Invalid UTF-8 or UTF-16 becomes the replacement character.
[[nodiscard]] std::wstring WideFromUtf8(std::string_view utf8);
[[nodiscard]] std::string Utf8FromWide(std::wstring_view wide);

/// The text of a call of the system's that fills a buffer and returns the text's length, or the
/// room that it needs.
template <class Call>
[[nodiscard]] std::wstring TextOfCall(Call&& call) {
  std::wstring text(260, L'\0');
  for (;;) {
    const auto length = call(text.data(), static_cast<unsigned>(text.size()));
    const bool isWhole = length < text.size();
    text.resize(length);
    if (isWhole) return text;
  }
}

}  // namespace gorbex
