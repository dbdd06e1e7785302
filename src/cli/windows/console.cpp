#include "cli/windows/console.h"

#include <algorithm>
#include <ios>
#include <string_view>

#include "platform/windows/wide_text.h"

namespace gorbex::cli {

bool IsConsole(DWORD standardStream) {
  DWORD mode = 0;
  return GetConsoleMode(GetStdHandle(standardStream), &mode) != 0;
}

TerminalSize SizeOfConsole() {
  CONSOLE_SCREEN_BUFFER_INFO info{};
  if (GetConsoleScreenBufferInfo(GetStdHandle(STD_ERROR_HANDLE), &info) == 0) return {};
  const SMALL_RECT& shown = info.srWindow;
  return {static_cast<std::size_t>(shown.Right - shown.Left + 1),
          static_cast<std::size_t>(shown.Bottom - shown.Top + 1)};
}

ConsoleOutput::int_type ConsoleOutput::overflow(int_type character) {
  if (traits_type::eq_int_type(character, traits_type::eof()))
    return traits_type::not_eof(character);
  waiting_ += traits_type::to_char_type(character);
  const bool isShown = waiting_.back() != '\n' || sync() == 0;
  return isShown ? character : traits_type::eof();
}

int ConsoleOutput::sync() {
  constexpr std::size_t kMostAtOnce = 8192;  // older consoles refuse long texts
  const auto wide = WideFromUtf8(waiting_);
  waiting_.clear();
  for (std::wstring_view rest = wide; !rest.empty();) {
    DWORD written = 0;
    const auto size = static_cast<DWORD>(std::min(rest.size(), kMostAtOnce));
    if (WriteConsoleW(console_, rest.data(), size, &written, nullptr) == 0 || written == 0)
      return -1;
    rest.remove_prefix(written);
  }
  return 0;
}

ConsoleInput::int_type ConsoleInput::underflow() {
  constexpr wchar_t kEndOfInput = L'\x1A';
  std::array<wchar_t, 4096> typed{};
  DWORD count = 0;
  const auto size = static_cast<DWORD>(typed.size());
  if (ReadConsoleW(console_, typed.data(), size, &count, nullptr) == 0 || count == 0 ||
      typed.front() == kEndOfInput) {
    return traits_type::eof();
  }
  line_ = Utf8FromWide({typed.data(), count});
  std::erase(line_, '\r');
  setg(line_.data(), line_.data(), line_.data() + line_.size());
  return line_.empty() ? traits_type::eof() : traits_type::to_int_type(line_.front());
}

ConsoleStream::ConsoleStream(std::ios& stream, DWORD standardStream) : stream_(stream) {
  if (!IsConsole(standardStream)) return;
  if (standardStream == STD_INPUT_HANDLE) {
    console_ = std::make_unique<ConsoleInput>();
  } else {
    console_ = std::make_unique<ConsoleOutput>(standardStream);
  }
  before_ = stream_.rdbuf(console_.get());
}

ConsoleStream::~ConsoleStream() {
  if (!console_) return;
  console_->pubsync();
  stream_.rdbuf(before_);
}

ConsoleMode::ConsoleMode(DWORD standardStream, DWORD on, DWORD off)
    : console_(GetStdHandle(standardStream)),
      isSet_(GetConsoleMode(console_, &before_) != 0 &&
             SetConsoleMode(console_, (before_ | on) & ~off) != 0) {}

ConsoleMode::~ConsoleMode() {
  if (isSet_) SetConsoleMode(console_, before_);
}

}  // namespace gorbex::cli
