#include "platform/windows/system_message.h"

#include <windows.h>

#include <array>
#include <string_view>

#include "platform/plain_text.h"
#include "platform/windows/wide_text.h"

namespace gorbex {
std::string SystemMessage(std::uint32_t number) {
  constexpr DWORD kFlags =
      FORMAT_MESSAGE_FROM_SYSTEM | FORMAT_MESSAGE_IGNORE_INSERTS | FORMAT_MESSAGE_MAX_WIDTH_MASK;
  std::array<wchar_t, 1024> words{};
  const DWORD length = FormatMessageW(kFlags, nullptr, number, 0, words.data(),
                                      static_cast<DWORD>(words.size()), nullptr);
  auto text = FromWideRoughly(std::wstring_view(words.data(), length));
  text.resize(text.find_last_not_of(" .\r\n") + 1);
  return text.empty() ? "error 0x" + Hexadecimal(number) : text;
}

}  // namespace gorbex
