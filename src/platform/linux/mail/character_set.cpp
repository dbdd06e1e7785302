#include "platform/linux/mail/character_set.h"

#include <algorithm>
#include <array>
#include <exception>
#include <vmime/charset.hpp>

#include "platform/code_page.h"

namespace gorbex {
namespace {

std::size_t LengthOfCharacter(std::string_view utf8) {
  std::size_t length = 1;
  while (length < utf8.size() && (static_cast<unsigned char>(utf8[length]) & 0xC0U) == 0x80U) {
    ++length;
  }
  return length;
}

bool IsUtf8(std::string_view text) {
  constexpr std::array<unsigned, 5> kMask = {0, 0x80, 0xE0, 0xF0, 0xF8};
  constexpr std::array<unsigned, 5> kLead = {0, 0x00, 0xC0, 0xE0, 0xF0};
  while (!text.empty()) {
    const auto length = LengthOfCharacter(text);
    const auto lead = static_cast<unsigned char>(text.front());
    if (length >= kMask.size() || (lead & kMask[length]) != kLead[length]) return false;
    text.remove_prefix(length);
  }
  return true;
}

// Sets whose upper half the senders themselves take for the code page's.
bool IsCodePage(const std::string& name) {
  constexpr std::array<std::string_view, 8> kNames = {
      "", "us-ascii", "ascii", "iso-8859-1", "latin1", "windows-1252", "cp1252", "x-user-defined"};
  return std::find(kNames.begin(), kNames.end(), name) != kNames.end();
}

}  // namespace

std::string FromHost(std::string_view utf8) {
  std::string text;
  text.reserve(utf8.size());
  while (!utf8.empty()) {
    const auto length = LengthOfCharacter(utf8);
    if (length == 1 && static_cast<unsigned char>(utf8.front()) < 0x80U) {
      text += utf8.front();
    } else {
      text += FromUtf8(utf8.substr(0, length)).value_or("?");
    }
    utf8.remove_prefix(length);
  }
  return text;
}

std::string FromCharacterSet(std::string_view bytes, const std::string& name) {
  const auto set = LowerCase(name);
  if (IsCodePage(set)) return std::string(bytes);
  if (set == "utf-8" || set == "utf8") return FromHost(bytes);
  try {
    vmime::string utf8;
    vmime::charset::convert(std::string(bytes), utf8, vmime::charset(set),
                            vmime::charset(vmime::charsets::UTF_8));
    return FromHost(utf8);
  } catch (const std::exception&) {
    return std::string(bytes);
  }
}

std::string FromAnyCharacterSet(std::string_view bytes) {
  return IsUtf8(bytes) ? FromHost(bytes) : std::string(bytes);
}

}  // namespace gorbex
