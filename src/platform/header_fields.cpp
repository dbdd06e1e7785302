#include "platform/header_fields.h"

#include <algorithm>

#include "platform/code_page.h"
#include "platform/plain_text.h"

namespace gorbex {
namespace {

constexpr std::size_t kLongestValue = 8192;

constexpr std::string_view kSpaceOrTab = " \t";

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
    if (kSpaceOrTab.find(line.front()) == std::string_view::npos) {
      if (value) break;
      const auto colon = line.find(':');
      if (colon == std::string_view::npos) continue;
      if (EqualsIgnoringCase(Trimmed(line.substr(0, colon), kSpaceOrTab), name)) {
        value = Trimmed(line.substr(colon + 1), kSpaceOrTab);
      }
    } else if (value && value->size() < kLongestValue) {
      value->append(" ").append(Trimmed(line, kSpaceOrTab));
    }
  }
  if (!value) return value;
  return OnOneLine(std::string_view(*value).substr(0, kLongestValue));
}

std::size_t EndOfHeader(std::string_view text) {
  auto rest = text;
  while (!rest.empty() && !TakeLine(rest).empty()) {
  }
  return text.size() - rest.size();
}

bool IsAutomaticMail(std::string_view header) {
  const auto lower = [&](const char* name) {
    return LowerCase(FieldOf(header, name).value_or(""));
  };
  const auto submitted = lower("Auto-Submitted");
  if (!submitted.empty() && submitted.substr(0, submitted.find_first_of("; (")) != "no") {
    return true;
  }
  const auto precedence = lower("Precedence");
  for (const char* kind : {"bulk", "junk", "list", "auto_reply"}) {
    if (precedence.substr(0, precedence.find_first_of("; (")) == kind) return true;
  }
  if (lower("From").find("mailer-daemon@") != std::string::npos) return true;
  std::string path = lower("Return-Path");
  std::erase(path, ' ');
  return path == "<>" || FieldOf(header, "List-Id").has_value();
}

}  // namespace gorbex
