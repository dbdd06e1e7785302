#include "compiler/source_text.h"

#include <algorithm>

#include "compiler/windows_path.h"
#include "platform/code_page.h"
#include "platform/header_fields.h"
#include "platform/plain_text.h"

namespace gorbex::standin {
namespace {

bool IsWordCharacter(char c) {
  const bool digit = c >= '0' && c <= '9';
  const bool letter = (c >= 'a' && c <= 'z') || (c >= 'A' && c <= 'Z');
  return digit || letter || c == '_' || static_cast<unsigned char>(c) >= 0x80;
}

// Takes the designer's part off: "VERSION", then one block that "End" closes.
bool SkipHeader(std::string_view& text) {
  if (FirstWord(text) != "version") return true;
  std::size_t depth = 0;
  while (!text.empty()) {
    const auto word = FirstWord(Trimmed(TakeLine(text)));
    if (word == "begin" || word == "beginproperty") ++depth;
    if ((word == "end" || word == "endproperty") && depth > 0 && --depth == 0) return true;
  }
  return false;
}

bool IsAttribute(std::string_view line) {
  return FirstWord(line) == "attribute" && line.find(".VB_") != std::string_view::npos;
}

bool IsHeaderAttribute(std::string_view line) {
  return FirstWord(line) == "attribute" && !FirstWord(Trimmed(line.substr(9))).empty();
}

bool IsContinued(std::string_view line) {
  return line.ends_with(" _") || line == "_";
}

// The end of a date such as #12:30:00 PM#, or of nothing when the "#" is none of a date.
std::size_t EndOfDate(std::string_view text, std::size_t start) {
  const auto end = text.find_first_not_of("0123456789/:- AMPamp", start + 1);
  const bool isDate = end != std::string_view::npos && text[end] == '#' && end > start + 1;
  return isDate ? end : start;
}

/// Splits one joined line into statements.
class StatementSplitter {
 public:
  explicit StatementSplitter(Texts texts) : texts_(texts) {}

  std::vector<std::string> Split(std::string_view text) {
    for (std::size_t i = 0; i < text.size() && text[i] != '\''; ++i) {
      if (text[i] == '"') {
        const auto end = std::min(text.find('"', i + 1), text.size());
        TakeText(text.substr(i + 1, end - i - 1));
        i = end;
      } else if (text[i] == '#') {
        i = EndOfDate(text, i);
        statement_ += '#';
      } else if (text[i] == ':' && !text.substr(i + 1).starts_with('=')) {
        if (!Finish()) return statements_;
      } else {
        statement_ += text[i];
      }
    }
    Finish();
    return statements_;
  }

 private:
  void TakeText(std::string_view text) {
    constexpr std::string_view kHexDigits = "0123456789ABCDEF";
    statement_ += '"';
    for (const char letter : texts_ == Texts::AsDigits ? text : std::string_view()) {
      const auto byte = static_cast<unsigned char>(letter);
      statement_ += {kHexDigits[byte >> 4U], kHexDigits[byte & 0x0FU]};
    }
    statement_ += '"';
  }

  // False when the statement is a remark, which takes the rest of the line.
  bool Finish() {
    const auto text = Trimmed(statement_);
    if (FirstWord(text) == "rem") return false;
    if (!text.empty()) statements_.emplace_back(text);
    statement_.clear();
    return true;
  }

  Texts texts_;
  std::string statement_;
  std::vector<std::string> statements_;
};

/// Follows #If ... #End If and tells which lines are read.
class Conditions {
 public:
  /// True for a directive, which is not a statement itself.
  bool Take(std::string_view line) {
    if (!line.starts_with('#')) return false;
    const auto word = FirstWord(Trimmed(line.substr(1)));
    if (word == "if") {
      read_.push_back(true);
    } else if (word == "else" || word == "elseif") {
      Leave();
    } else if (word == "end" && !read_.empty()) {
      Leave();
      --skipped_;
      read_.pop_back();
    }
    return word == "if" || word == "else" || word == "elseif" || word == "end" || word == "const";
  }

  [[nodiscard]] bool Reads() const { return skipped_ == 0; }

 private:
  void Leave() {
    if (read_.empty() || !read_.back()) return;
    read_.back() = false;
    ++skipped_;
  }

  std::vector<bool> read_;
  std::size_t skipped_ = 0;
};

class CodeReader {
 public:
  explicit CodeReader(Texts texts) : texts_(texts) {}

  std::vector<CodeLine> Read(std::string_view text) {
    bool inHeader = true;
    while (!text.empty()) {
      const auto line = TakeLine(text);
      inHeader = inHeader && IsHeaderAttribute(line);
      if (inHeader || IsAttribute(line)) continue;
      TakeCodeLine(line);
    }
    if (!joined_.empty()) Finish();
    return std::move(lines_);
  }

 private:
  void TakeCodeLine(std::string_view line) {
    if (joined_.empty()) first_ = count_;
    ++count_;
    joined_.append(line);
    if (IsContinued(line)) {
      joined_.pop_back();
      joined_ += ' ';
    } else {
      Finish();
    }
  }

  void Finish() {
    const bool isDirective = conditions_.Take(Trimmed(joined_));
    lines_.push_back({first_, {}});
    if (!isDirective && conditions_.Reads()) {
      lines_.back().statements = StatementSplitter(texts_).Split(joined_);
    }
    joined_.clear();
  }

  Texts texts_;
  Conditions conditions_;
  std::string joined_;
  std::size_t first_ = 0;
  std::size_t count_ = 0;
  std::vector<CodeLine> lines_;
};

}  // namespace

std::string FirstWord(std::string_view text) {
  const auto end = std::find_if_not(text.begin(), text.end(), IsWordCharacter);
  return LowerCase(text.substr(0, static_cast<std::size_t>(end - text.begin())));
}

std::optional<std::string> HeaderAttribute(std::string_view file, std::string_view name) {
  if (!SkipHeader(file)) return std::nullopt;
  while (!file.empty()) {
    const auto line = TakeLine(file);
    if (!IsHeaderAttribute(line)) return std::nullopt;
    const auto mark = line.find('=');
    if (mark == std::string_view::npos) continue;
    if (!EqualsIgnoringCase(Trimmed(line.substr(9, mark - 9)), name)) continue;
    return std::string(Unquoted(Trimmed(line.substr(mark + 1))));
  }
  return std::nullopt;
}

std::optional<std::vector<CodeLine>> CodeView(std::string_view file, Texts texts) {
  if (!SkipHeader(file)) return std::nullopt;
  return CodeReader(texts).Read(file);
}

}  // namespace gorbex::standin
