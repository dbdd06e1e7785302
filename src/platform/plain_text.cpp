#include "platform/plain_text.h"

#include <algorithm>
#include <iterator>

#include "platform/code_page.h"

namespace gorbex {

std::string_view Trimmed(std::string_view text, std::string_view blanks) {
  text.remove_prefix(std::min(text.find_first_not_of(blanks), text.size()));
  return text.substr(0, text.find_last_not_of(blanks) + 1);
}

std::vector<std::string_view> Split(std::string_view text, char separator) {
  std::vector<std::string_view> fields;
  if (text.empty()) return fields;
  std::size_t start = 0;
  for (auto end = text.find(separator); end != std::string_view::npos;
       end = text.find(separator, start)) {
    fields.push_back(text.substr(start, end - start));
    start = end + 1;
  }
  fields.push_back(text.substr(start));
  return fields;
}

std::string Joined(const std::vector<std::string>& texts, std::string_view separator) {
  std::string joined;
  for (const std::string& text : texts) joined.append(joined.empty() ? "" : separator).append(text);
  return joined;
}

std::string Hexadecimal(std::uint64_t number) {
  char digits[16];
  return {digits, std::to_chars(std::begin(digits), std::end(digits), number, 16).ptr};
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

std::string Plain(std::string_view text) {
  std::string kept;
  kept.reserve(text.size());
  // Control characters stay out: a log that a stranger wrote must not steer the user's terminal.
  std::copy_if(text.begin(), text.end(), std::back_inserter(kept), [](char letter) {
    const auto unicode = ToUnicode(letter);
    return letter == '\n' || letter == '\t' || (unicode >= 0x20 && unicode < 0x7F) ||
           unicode >= 0xA0;
  });
  return ToUtf8(kept);
}

// Plain() leaves no character that XML forbids.
std::string MarkupText(std::string_view text) {
  return MarkupUtf8(Plain(text));
}

std::string MarkupUtf8(std::string_view utf8) {
  std::string escaped;
  for (const char letter : utf8) {
    switch (letter) {
      case '&':
        escaped += "&amp;";
        break;
      case '<':
        escaped += "&lt;";
        break;
      case '>':
        escaped += "&gt;";
        break;
      case '"':
        escaped += "&quot;";
        break;
      case '\n':
        escaped += "&#10;";
        break;
      default:
        escaped += letter;
    }
  }
  return escaped;
}

}  // namespace gorbex
