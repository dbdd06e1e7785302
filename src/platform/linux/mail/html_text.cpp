#include "platform/linux/mail/html_text.h"

#include <algorithm>
#include <array>
#include <cctype>
#include <optional>

#include "platform/code_page.h"
#include "platform/plain_text.h"

namespace gorbex {
namespace {

// The names of the characters 160 to 255.
constexpr std::array<std::string_view, 96> kLatinNames = {
    "nbsp",   "iexcl",  "cent",   "pound",  "curren", "yen",    "brvbar", "sect",   "uml",
    "copy",   "ordf",   "laquo",  "not",    "shy",    "reg",    "macr",   "deg",    "plusmn",
    "sup2",   "sup3",   "acute",  "micro",  "para",   "middot", "cedil",  "sup1",   "ordm",
    "raquo",  "frac14", "frac12", "frac34", "iquest", "Agrave", "Aacute", "Acirc",  "Atilde",
    "Auml",   "Aring",  "AElig",  "Ccedil", "Egrave", "Eacute", "Ecirc",  "Euml",   "Igrave",
    "Iacute", "Icirc",  "Iuml",   "ETH",    "Ntilde", "Ograve", "Oacute", "Ocirc",  "Otilde",
    "Ouml",   "times",  "Oslash", "Ugrave", "Uacute", "Ucirc",  "Uuml",   "Yacute", "THORN",
    "szlig",  "agrave", "aacute", "acirc",  "atilde", "auml",   "aring",  "aelig",  "ccedil",
    "egrave", "eacute", "ecirc",  "euml",   "igrave", "iacute", "icirc",  "iuml",   "eth",
    "ntilde", "ograve", "oacute", "ocirc",  "otilde", "ouml",   "divide", "oslash", "ugrave",
    "uacute", "ucirc",  "uuml",   "yacute", "thorn",  "yuml"};

struct NamedCharacter {
  std::string_view name;
  char32_t character;
};

constexpr NamedCharacter kNames[] = {
    {"amp", '&'},      {"lt", '<'},       {"gt", '>'},       {"quot", '"'},     {"apos", '\''},
    {"euro", 0x20AC},  {"ndash", 0x2013}, {"mdash", 0x2014}, {"lsquo", 0x2018}, {"rsquo", 0x2019},
    {"ldquo", 0x201C}, {"rdquo", 0x201D}, {"bull", 0x2022},  {"hellip", 0x2026}};

constexpr std::array<std::string_view, 21> kBlocks = {
    "address", "blockquote", "br", "dd", "div", "dl", "dt",  "h1",    "h2", "h3", "h4",
    "h5",      "h6",         "hr", "li", "ol",  "p",  "pre", "table", "tr", "ul"};

constexpr std::size_t kLongestName = 10;

std::optional<char32_t> NumberedCharacter(std::string_view digits) {
  const bool isHexadecimal = digits.starts_with('x') || digits.starts_with('X');
  if (isHexadecimal) digits.remove_prefix(1);
  return WholeNumber<std::uint32_t>(digits, isHexadecimal ? 16 : 10);
}

std::optional<char32_t> CharacterOf(std::string_view name) {
  if (name.starts_with('#')) return NumberedCharacter(name.substr(1));
  const auto* named = std::find_if(std::begin(kNames), std::end(kNames),
                                   [&](const auto& known) { return known.name == name; });
  if (named != std::end(kNames)) return named->character;
  const auto* latin = std::find(kLatinNames.begin(), kLatinNames.end(), name);
  if (latin == kLatinNames.end()) return std::nullopt;
  return static_cast<char32_t>(160 + (latin - kLatinNames.begin()));
}

/// Reads from the front to the back, each byte a bounded number of times.
class HtmlReader {
 public:
  explicit HtmlReader(std::string_view html) : rest_(html) {}

  std::string Text() {
    while (!rest_.empty()) {
      if (rest_.starts_with("<!--")) {
        SkipPast("-->");
      } else if (IsTag()) {
        TakeTag();
      } else if (rest_.front() == '&') {
        TakeCharacterName();
      } else {
        Add(rest_.front());
        rest_.remove_prefix(1);
      }
    }
    return std::move(text_);
  }

 private:
  [[nodiscard]] bool IsTag() const {
    if (rest_.size() < 2 || rest_[0] != '<') return false;
    const auto next = static_cast<unsigned char>(rest_[1]);
    return next == '/' || next == '!' || next == '?' || (next < 0x80 && std::isalpha(next) != 0);
  }

  void SkipPast(std::string_view mark) {
    const auto at = rest_.find(mark);
    rest_.remove_prefix(at == std::string_view::npos ? rest_.size() : at + mark.size());
  }

  void TakeTag() {
    const bool isEnd = rest_[1] == '/';
    rest_.remove_prefix(isEnd ? 2 : 1);
    const auto length = std::min(rest_.find_first_of(" \t\r\n/>"), rest_.size());
    const auto name = LowerCase(rest_.substr(0, std::min(length, kLongestName)));
    SkipPast(">");
    if (!isEnd && (name == "script" || name == "style" || name == "title")) {
      SkipElement("</" + name);
    }
    if (std::find(kBlocks.begin(), kBlocks.end(), name) == kBlocks.end()) return;
    // A forced break ends even an empty line, a block only one that holds something.
    if (name == "br" || (!text_.empty() && text_.back() != '\n')) EndLine();
  }

  void SkipElement(const std::string& end) {
    while (!rest_.empty() && !EqualsIgnoringCase(rest_.substr(0, end.size()), end)) {
      rest_.remove_prefix(1);
      rest_.remove_prefix(std::min(rest_.find('<'), rest_.size()));
    }
  }

  void TakeCharacterName() {
    const auto end = rest_.substr(0, kLongestName).find(';');
    const auto character =
        end == std::string_view::npos ? std::nullopt : CharacterOf(rest_.substr(1, end - 1));
    if (!character) {
      Add('&');
      rest_.remove_prefix(1);
      return;
    }
    rest_.remove_prefix(end + 1);
    if (*character == 0xA0) {
      Add(' ');
    } else {
      AddVisible(FromUnicode(*character).value_or('?'));
    }
  }

  void Add(char letter) {
    if (letter != ' ' && letter != '\t' && letter != '\r' && letter != '\n') {
      AddVisible(letter);
    } else if (!text_.empty() && text_.back() != '\n') {
      hasBlank_ = true;
    }
  }

  // Blanks run together, and vanish at either end of a line.
  void AddVisible(char letter) {
    if (hasBlank_) text_ += ' ';
    hasBlank_ = false;
    text_ += letter;
  }

  void EndLine() {
    hasBlank_ = false;
    text_ += '\n';
  }

  std::string_view rest_;
  std::string text_;
  bool hasBlank_ = false;
};

}  // namespace

std::string HtmlText(std::string_view html) {
  return HtmlReader(html).Text();
}

}  // namespace gorbex
