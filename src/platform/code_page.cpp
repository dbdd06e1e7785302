#include "platform/code_page.h"

#include <algorithm>

namespace gorbex {
namespace {

/// Capital letters whose small letters lie the same distance away, every `step` characters.
struct LetterRange {
  char16_t first;
  char16_t last;
  char16_t step;
  int toLower;
};

// All letters that have both cases in any of the single-byte code pages.
constexpr std::array<LetterRange, 19> kCapitals = {{
    {0x0041, 0x005A, 1, 32},  // Latin
    {0x00C0, 0x00D6, 1, 32},   {0x00D8, 0x00DE, 1, 32}, {0x0100, 0x012E, 2, 1},
    {0x0132, 0x0136, 2, 1},    {0x0139, 0x0147, 2, 1},  {0x014A, 0x0176, 2, 1},
    {0x0178, 0x0178, 1, -121}, {0x0179, 0x017D, 2, 1},  {0x01A0, 0x01A0, 1, 1},
    {0x01AF, 0x01AF, 1, 1},    {0x0386, 0x0386, 1, 38},  // Greek
    {0x0388, 0x038A, 1, 37},   {0x038C, 0x038C, 1, 64}, {0x038E, 0x038F, 1, 63},
    {0x0391, 0x03AB, 1, 32},   {0x0400, 0x040F, 1, 80},  // Cyrillic
    {0x0410, 0x042F, 1, 32},   {0x0490, 0x0490, 1, 1},
}};

constexpr std::size_t kAscii = 0x80;

// The byte of a character; the size of the table when it has none.
constexpr std::size_t IndexOf(const std::array<char16_t, 256>& characters, char32_t character) {
  if (character < kAscii) return character;
  const auto* const own = characters.begin() + kAscii;
  return static_cast<std::size_t>(std::find(own, characters.end(), character) - characters.begin());
}

constexpr char16_t SmallLetterOf(char16_t character) {
  for (const auto& range : kCapitals) {
    if (character < range.first || character > range.last) continue;
    if ((character - range.first) % range.step != 0) continue;
    return static_cast<char16_t>(character + range.toLower);
  }
  return character;
}

constexpr CodePage::UpperHalf kWindows1252 = [] {
  constexpr std::array<char16_t, 32> kControls = {
      0x20AC, 0x0081, 0x201A, 0x0192, 0x201E, 0x2026, 0x2020, 0x2021, 0x02C6, 0x2030, 0x0160,
      0x2039, 0x0152, 0x008D, 0x017D, 0x008F, 0x0090, 0x2018, 0x2019, 0x201C, 0x201D, 0x2022,
      0x2013, 0x2014, 0x02DC, 0x2122, 0x0161, 0x203A, 0x0153, 0x009D, 0x017E, 0x0178};
  CodePage::UpperHalf half{};
  for (std::size_t i = 0; i < half.size(); ++i) {
    half[i] = i < kControls.size() ? kControls[i] : static_cast<char16_t>(kAscii + i);
  }
  return half;
}();

void AppendUtf8(std::string& utf8, char32_t c) {
  if (c < 0x80) {
    utf8 += static_cast<char>(c);
  } else if (c < 0x800) {
    utf8 += static_cast<char>(0xC0 | (c >> 6));
    utf8 += static_cast<char>(0x80 | (c & 0x3F));
  } else {
    utf8 += static_cast<char>(0xE0 | (c >> 12));
    utf8 += static_cast<char>(0x80 | ((c >> 6) & 0x3F));
    utf8 += static_cast<char>(0x80 | (c & 0x3F));
  }
}

// Takes one character off the front; nothing when the bytes are not UTF-8.
std::optional<char32_t> TakeUtf8(std::string_view& text) {
  const auto lead = static_cast<unsigned char>(text.front());
  const std::size_t length = lead < 0x80             ? 1
                             : (lead & 0xE0) == 0xC0 ? 2
                             : (lead & 0xF0) == 0xE0 ? 3
                             : (lead & 0xF8) == 0xF0 ? 4
                                                     : 0;
  if (length == 0 || text.size() < length) return std::nullopt;
  char32_t c = length == 1 ? lead : lead & (0x7FU >> length);
  for (std::size_t i = 1; i < length; ++i) {
    const auto next = static_cast<unsigned char>(text[i]);
    if ((next & 0xC0) != 0x80) return std::nullopt;
    c = (c << 6) | (next & 0x3F);
  }
  constexpr std::array<char32_t, 5> kSmallest = {0, 0, 0x80, 0x800, 0x10000};
  if (c < kSmallest[length]) return std::nullopt;
  text.remove_prefix(length);
  return c;
}

void SkipBrokenCharacter(std::string_view& text) {
  const auto isTail = [](char byte) { return (static_cast<unsigned char>(byte) & 0xC0) == 0x80; };
  const auto* const end = std::find_if_not(text.begin() + 1, text.end(), isTail);
  text.remove_prefix(static_cast<std::size_t>(end - text.begin()));
}

}  // namespace

constexpr CodePage::Tables CodePage::TablesOf(const UpperHalf& upperHalf) {
  Tables tables;
  auto& characters = tables.characters;
  for (std::size_t i = 0; i < characters.size(); ++i) {
    characters[i] = i < kAscii ? static_cast<char16_t>(i) : upperHalf[i - kAscii];
    tables.lowerCase[i] = tables.upperCase[i] = static_cast<char>(i);
  }
  for (std::size_t capital = 0; capital < characters.size(); ++capital) {
    const auto letter = SmallLetterOf(characters[capital]);
    if (letter == characters[capital]) continue;
    const auto small = IndexOf(characters, letter);
    if (small == characters.size()) continue;
    tables.lowerCase[capital] = static_cast<char>(small);
    tables.upperCase[small] = static_cast<char>(capital);
  }
  return tables;
}

constinit CodePage CodePage::used_{TablesOf(kWindows1252)};

CodePage CodePage::Windows1252() {
  return CodePage(kWindows1252);
}

CodePage::CodePage(const UpperHalf& upperHalf) : CodePage(TablesOf(upperHalf)) {}

std::optional<char> CodePage::Byte(char32_t character) const {
  const auto byte = IndexOf(tables_.characters, character);
  if (byte == tables_.characters.size()) return std::nullopt;
  return static_cast<char>(byte);
}

RuntimeError UnusableCodePage(const std::string& number) {
  return RuntimeError::WithDescription(
      ErrorNumber::InvalidCall,
      "the system's code page is " + number +
          ", and only one with a single byte for each character can be used, such as 1250 or 1252");
}

std::string LowerCase(std::string_view text) {
  std::string lowered(text);
  for (char& letter : lowered) letter = LowerCase(letter);
  return lowered;
}

std::string UpperCase(std::string_view text) {
  std::string raised(text);
  for (char& letter : raised) letter = CodePage::Used().Upper(letter);
  return raised;
}

bool EqualsIgnoringCase(std::string_view a, std::string_view b) {
  return std::equal(a.begin(), a.end(), b.begin(), b.end(),
                    [](char x, char y) { return LowerCase(x) == LowerCase(y); });
}

std::optional<char> FromUnicode(char32_t character) {
  return CodePage::Used().Byte(character);
}

bool IsAscii(std::string_view text) {
  return std::all_of(text.begin(), text.end(), [](char byte) { return byte >= 0; });
}

bool IsUtf8(std::string_view text) {
  while (!text.empty()) {
    if (!TakeUtf8(text)) return false;
  }
  return true;
}

std::string OnOneLine(std::string_view text) {
  std::string line(text);
  std::replace_if(
      line.begin(), line.end(),
      [](char letter) { return static_cast<unsigned char>(letter) < 0x20 || letter == 0x7F; }, ' ');
  return line;
}

std::string ToUtf8(std::string_view text) {
  if (IsAscii(text)) return std::string(text);
  std::string utf8;
  utf8.reserve(text.size());
  for (const char byte : text) AppendUtf8(utf8, ToUnicode(byte));
  return utf8;
}

std::string FromUtf8Roughly(std::string_view utf8) {
  std::string text;
  text.reserve(utf8.size());
  while (!utf8.empty()) {
    const auto character = TakeUtf8(utf8);
    if (!character) SkipBrokenCharacter(utf8);
    text += (character ? FromUnicode(*character) : std::nullopt).value_or('?');
  }
  return text;
}

std::optional<std::string> FromUtf8(std::string_view utf8) {
  std::string text;
  text.reserve(utf8.size());
  while (!utf8.empty()) {
    const auto character = TakeUtf8(utf8);
    const auto byte = character ? FromUnicode(*character) : std::nullopt;
    if (!byte) return std::nullopt;
    text += *byte;
  }
  return text;
}

}  // namespace gorbex
