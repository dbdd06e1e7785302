#include "cli/json_line.h"

#include <nlohmann/json.hpp>

#include "platform/code_page.h"

namespace gorbex::cli {

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

void JsonLine::AddEscaped(std::string_view utf8) {
  for (const char letter : utf8) {
    if (letter == '"' || letter == '\\') {
      line_ += '\\';
      line_ += letter;
    } else if (static_cast<unsigned char>(letter) < ' ') {
      const std::string quoted = nlohmann::json(std::string(1, letter)).dump();
      line_.append(quoted, 1, quoted.size() - 2);
    } else {
      line_ += letter;
    }
  }
}

}  // namespace gorbex::cli
