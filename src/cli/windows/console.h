#pragma once

#include <windows.h>

#include <iosfwd>
#include <memory>
#include <streambuf>
#include <string>

#include "cli/frame.h"

namespace gorbex::cli {

// A console takes and gives UTF-16, while the program's streams are UTF-8. Anything else, a
// file or a pipe, gets the bytes as they are.

[[nodiscard]] bool IsConsole(DWORD standardStream);

/// The visible part of the console that takes the error output.
[[nodiscard]] TerminalSize SizeOfConsole();

/// Shows UTF-8 on a console, in whole lines or when flushed.
class ConsoleOutput : public std::streambuf {
 public:
  explicit ConsoleOutput(DWORD standardStream) : console_(GetStdHandle(standardStream)) {}

 protected:
  int_type overflow(int_type character) override;
  int sync() override;

 private:
  HANDLE console_;
  std::string waiting_;
};

/// Reads what is typed on a console as UTF-8.
class ConsoleInput : public std::streambuf {
 public:
  ConsoleInput() : console_(GetStdHandle(STD_INPUT_HANDLE)) {}

 protected:
  int_type underflow() override;

 private:
  HANDLE console_;
  std::string line_;
};

/// Lets a stream of the program use the console while it exists, where the stream is one.
class ConsoleStream {
 public:
  ConsoleStream(std::ios& stream, DWORD standardStream);
  ~ConsoleStream();
  ConsoleStream(const ConsoleStream&) = delete;
  ConsoleStream& operator=(const ConsoleStream&) = delete;

 private:
  std::ios& stream_;
  std::unique_ptr<std::streambuf> console_;
  std::streambuf* before_ = nullptr;
};

/// Lets codes in the output move the cursor and choose colours; old headers do not name it.
inline constexpr DWORD kCodes = 0x0004;

/// Switches modes of a console on and off while it exists.
class ConsoleMode {
 public:
  ConsoleMode(DWORD standardStream, DWORD on, DWORD off);
  ~ConsoleMode();
  ConsoleMode(const ConsoleMode&) = delete;
  ConsoleMode& operator=(const ConsoleMode&) = delete;

  /// False on a console that lacks such a mode, and where the stream is not a console.
  [[nodiscard]] bool IsSet() const { return isSet_; }

 private:
  HANDLE console_;
  DWORD before_ = 0;
  bool isSet_;
};

}  // namespace gorbex::cli
