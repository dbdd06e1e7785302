#include "platform/windows/system_code_page.h"

#include <windows.h>

namespace gorbex {

CodePage CodePageNumbered(unsigned number) {
  CPINFO info{};
  if (GetCPInfo(number, &info) == 0 || info.MaxCharSize != 1) {
    throw UnusableCodePage(std::to_string(number));
  }
  CodePage::UpperHalf half{};
  for (std::size_t i = 0; i < half.size(); ++i) {
    const auto byte = static_cast<char>(0x80 + i);
    wchar_t character = 0;
    MultiByteToWideChar(number, 0, &byte, 1, &character, 1);
    half[i] = static_cast<char16_t>(character);
  }
  return CodePage(half);
}

CodePage SystemCodePage() {
  return CodePageNumbered(GetACP());
}

}  // namespace gorbex
