#include "cli/json_line.h"

#include <algorithm>

#include "cli/json_views.h"
#include "platform/code_page.h"

namespace gorbex::cli {
namespace {

// Those above ASCII begin with a byte that only a few letters share.
bool MayBeControl(char byte) {
  return static_cast<unsigned char>(byte) < ' ' || byte == '\x7F' || byte == '\xC2';
}

}  // namespace

void JsonLine::AddName(std::string_view name) {
  if (isEnded_) line_ = "{\"";
  line_.append(isEnded_ ? "" : ",\"").append(name).append("\":");
  isEnded_ = false;
}

void JsonLine::Add(std::string_view name, std::string_view text) {
  AddName(name);
  AddText(text);
}

void JsonLine::Add(std::string_view name, bool flag) {
  AddName(name);
  line_ += flag ? "true" : "false";
}

void JsonLine::Add(std::string_view name, const std::vector<std::string>& texts) {
  AddName(name);
  line_ += '[';
  for (const std::string& text : texts) {
    if (&text != texts.data()) line_ += ',';
    AddText(text);
  }
  line_ += ']';
}

std::string_view JsonLine::End() {
  line_ += '}';
  isEnded_ = true;
  return line_;
}

void JsonLine::AddText(std::string_view text) {
  line_ += '"';
  if (IsAscii(text)) {
    AddEscaped(text);
  } else {
    AddEscaped(ToUtf8(text));
  }
  line_ += '"';
}

// Room for the worst case is made first: taking one letter after the other is most of the work.
void JsonLine::AddEscaped(std::string_view utf8) {
  if (std::any_of(utf8.begin(), utf8.end(), MayBeControl)) {
    const std::string quoted = Written(utf8);
    line_.append(quoted, 1, quoted.size() - 2);
    return;
  }
  const auto before = line_.size();
  line_.resize(before + 2 * utf8.size());
  char* to = line_.data() + before;
  for (const char letter : utf8) {
    if (letter == '"' || letter == '\\') *to++ = '\\';
    *to++ = letter;
  }
  line_.resize(static_cast<std::size_t>(to - line_.data()));
}

}  // namespace gorbex::cli
