#include "platform/code_page.h"

#include <algorithm>
#include <array>
#include <cstdint>

namespace gorbex {
namespace {

using ByteTable = std::array<char, 256>;

// Unicode numbers of the bytes 0x80 to 0x9F; all others stand for themselves.
constexpr std::array<std::uint16_t, 32> kUpperControls = {
    0x20AC, 0x0081, 0x201A, 0x0192, 0x201E, 0x2026, 0x2020, 0x2021, 0x02C6, 0x2030, 0x0160,
    0x2039, 0x0152, 0x008D, 0x017D, 0x008F, 0x0090, 0x2018, 0x2019, 0x201C, 0x201D, 0x2022,
    0x2013, 0x2014, 0x02DC, 0x2122, 0x0161, 0x203A, 0x0153, 0x009D, 0x017E, 0x0178};

constexpr ByteTable kUpperCase = [] {
  ByteTable table{};
  for (unsigned i = 0; i < table.size(); ++i) table[i] = static_cast<char>(i);
  for (unsigned i = 0; i < table.size(); ++i) {
    const auto lower = static_cast<unsigned char>(kLowerCase[i]);
    if (lower != i) table[lower] = static_cast<char>(i);
  }
  return table;
}();

std::string Mapped(const ByteTable& table, std::string_view text) {
  std::string mapped(text);
  for (char& letter : mapped) letter = table[static_cast<unsigned char>(letter)];
  return mapped;
}

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

}  // namespace

std::string LowerCase(std::string_view text) {
  return Mapped(kLowerCase, text);
}

std::string UpperCase(std::string_view text) {
  return Mapped(kUpperCase, text);
}

bool EqualsIgnoringCase(std::string_view a, std::string_view b) {
  return std::equal(a.begin(), a.end(), b.begin(), b.end(),
                    [](char x, char y) { return LowerCase(x) == LowerCase(y); });
}

char32_t ToUnicode(char byte) {
  const auto value = static_cast<unsigned char>(byte);
  if (value >= 0x80 && value < 0xA0) return kUpperControls[value - 0x80U];
  return value;
}

std::optional<char> FromUnicode(char32_t character) {
  if (character < 0x80 || (character >= 0xA0 && character <= 0xFF)) {
    return static_cast<char>(character);
  }
  const auto* found = std::find(kUpperControls.begin(), kUpperControls.end(), character);
  if (found == kUpperControls.end()) return std::nullopt;
  return static_cast<char>(0x80 + (found - kUpperControls.begin()));
}

bool IsAscii(std::string_view text) {
  return std::all_of(text.begin(), text.end(), [](char byte) { return byte >= 0; });
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
