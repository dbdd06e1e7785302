#include "platform/linux/mail/character_set.h"

#include <exception>
#include <vmime/charset.hpp>

#include "platform/code_page.h"

namespace gorbex {
namespace {

// Sets that do not define the upper half, which then counts as the code page's.
bool IsCodePage(const std::string& name) {
  return name.empty() || name == "us-ascii" || name == "ascii" || name == "x-user-defined";
}

// Senders use these names for the same set.
bool IsWindows1252(const std::string& name) {
  return name == "iso-8859-1" || name == "latin1" || name == "windows-1252" || name == "cp1252";
}

std::string FromWindows1252(std::string_view bytes) {
  const auto windows1252 = CodePage::Windows1252();
  std::string text(bytes);
  for (char& byte : text) byte = FromUnicode(windows1252.Character(byte)).value_or('?');
  return text;
}

}  // namespace

std::string FromCharacterSet(std::string_view bytes, const std::string& name) {
  const auto set = LowerCase(name);
  if (IsCodePage(set)) return std::string(bytes);
  if (IsWindows1252(set)) return FromWindows1252(bytes);
  if (set == "utf-8" || set == "utf8") return FromUtf8Roughly(bytes);
  try {
    vmime::string utf8;
    vmime::charset::convert(std::string(bytes), utf8, vmime::charset(set),
                            vmime::charset(vmime::charsets::UTF_8));
    return FromUtf8Roughly(utf8);
  } catch (const std::exception&) {
    return std::string(bytes);
  }
}

std::string FromAnyCharacterSet(std::string_view bytes) {
  return IsUtf8(bytes) ? FromUtf8Roughly(bytes) : std::string(bytes);
}

}  // namespace gorbex
