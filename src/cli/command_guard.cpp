#include "cli/command_guard.h"

namespace gorbex::cli {

CommandGuard::Buffer::int_type CommandGuard::Buffer::overflow(int_type letter) {
  if (traits_type::eq_int_type(letter, traits_type::eof())) return traits_type::not_eof(letter);
  Put(traits_type::to_char_type(letter));
  return to_ ? letter : traits_type::eof();
}

int CommandGuard::Buffer::sync() {
  to_.flush();
  return to_ ? 0 : -1;
}

void CommandGuard::Buffer::Put(char letter) {
  if (isColonHeld_) {
    to_ << (letter == ':' ? ".:" : ":");
    isColonHeld_ = false;
  }
  if (letter == '#' && isAfterHash_) {
    to_ << (isJson != nullptr && *isJson ? "\\u0023" : " #");
  } else if (letter == ':' && isAtStart_) {
    isColonHeld_ = true;
  } else {
    to_.put(letter);
  }
  isAfterHash_ = letter == '#';
  const bool isBlank = letter == ' ' || letter == '\t' || letter == '\r';
  isAtStart_ = letter == '\n' || (isAtStart_ && isBlank);
}

}  // namespace gorbex::cli
