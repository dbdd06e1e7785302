#include "platform/plain_text.h"

#include <algorithm>
#include <charconv>

namespace gorbex {

std::string_view Trimmed(std::string_view text, std::string_view blanks) {
  text.remove_prefix(std::min(text.find_first_not_of(blanks), text.size()));
  return text.substr(0, text.find_last_not_of(blanks) + 1);
}

std::optional<std::string> PercentDecoded(std::string_view text) {
  std::string decoded;
  for (std::size_t i = 0; i < text.size(); ++i) {
    unsigned value = static_cast<unsigned char>(text[i]);
    if (text[i] == '%') {
      const auto digits = text.substr(i + 1, 2);
      const auto end = std::from_chars(digits.data(), digits.data() + digits.size(), value, 16);
      if (digits.size() < 2 || end.ptr != digits.data() + 2) return std::nullopt;
      i += 2;
    }
    decoded += static_cast<char>(value);
  }
  return decoded;
}

}  // namespace gorbex
