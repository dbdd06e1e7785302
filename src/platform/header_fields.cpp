#include "platform/header_fields.h"

#include <algorithm>

#include "platform/code_page.h"

namespace gorbex {
namespace {

constexpr std::size_t kLongestValue = 8192;

bool IsBlank(char letter) {
  return letter == ' ' || letter == '\t';
}

std::string_view WithoutBlanks(std::string_view text) {
  while (!text.empty() && IsBlank(text.front())) text.remove_prefix(1);
  while (!text.empty() && IsBlank(text.back())) text.remove_suffix(1);
  return text;
}

}  // namespace

std::string_view TakeLine(std::string_view& text) {
  const auto end = std::min(text.find('\n'), text.size());
  auto line = text.substr(0, end);
  text.remove_prefix(std::min(end + 1, text.size()));
  if (line.ends_with('\r')) line.remove_suffix(1);
  return line;
}

std::optional<std::string> FieldOf(std::string_view header, std::string_view name) {
  std::optional<std::string> value;
  while (!header.empty()) {
    const auto line = TakeLine(header);
    if (line.empty()) break;
    if (!IsBlank(line.front())) {
      if (value) break;
      const auto colon = line.find(':');
      if (colon == std::string_view::npos) continue;
      if (EqualsIgnoringCase(WithoutBlanks(line.substr(0, colon)), name)) {
        value = WithoutBlanks(line.substr(colon + 1));
      }
    } else if (value && value->size() < kLongestValue) {
      value->append(" ").append(WithoutBlanks(line));
    }
  }
  if (!value) return value;
  value->resize(std::min(value->size(), kLongestValue));
  for (char& letter : *value) {
    if (static_cast<unsigned char>(letter) < 0x20) letter = ' ';
  }
  return value;
}

std::size_t EndOfHeader(std::string_view text) {
  auto rest = text;
  while (!rest.empty() && !TakeLine(rest).empty()) {
  }
  return text.size() - rest.size();
}

}  // namespace gorbex
