#include "platform/windows/wide_text.h"

#include <windows.h>

#include "platform/code_page.h"

namespace gorbex {

std::wstring ToWide(std::string_view text) {
  std::wstring wide;
  wide.reserve(text.size());
  for (const char byte : text) wide += static_cast<wchar_t>(ToUnicode(byte));
  return wide;
}

std::optional<std::string> FromWide(std::wstring_view wide) {
  std::string text;
  text.reserve(wide.size());
  for (const wchar_t character : wide) {
    const auto byte = FromUnicode(character);
    if (!byte) return std::nullopt;
    text += *byte;
  }
  return text;
}

std::string FromWideRoughly(std::wstring_view wide) {
  std::string text;
  text.reserve(wide.size());
  for (const wchar_t character : wide) text += FromUnicode(character).value_or('?');
  return text;
}

std::wstring WideFromUtf8(std::string_view utf8) {
  const auto size = static_cast<int>(utf8.size());
  const int needed = MultiByteToWideChar(CP_UTF8, 0, utf8.data(), size, nullptr, 0);
  std::wstring wide(static_cast<std::size_t>(needed), L'\0');
  MultiByteToWideChar(CP_UTF8, 0, utf8.data(), size, wide.data(), needed);
  return wide;
}

std::string Utf8FromWide(std::wstring_view wide) {
  const auto size = static_cast<int>(wide.size());
  const int needed =
      WideCharToMultiByte(CP_UTF8, 0, wide.data(), size, nullptr, 0, nullptr, nullptr);
  std::string utf8(static_cast<std::size_t>(needed), '\0');
  WideCharToMultiByte(CP_UTF8, 0, wide.data(), size, utf8.data(), needed, nullptr, nullptr);
  return utf8;
}

}  // namespace gorbex
