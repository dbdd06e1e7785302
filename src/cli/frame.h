#pragma once

#include <cstddef>
#include <functional>
#include <iosfwd>
#include <optional>
#include <stdexcept>
#include <string>

#include "cli/ci_system.h"
#include "platform/host.h"

namespace gorbex::cli {

enum class ExitStatus { Done = 0, WorkFailed = 1, Unusable = 2, NothingChecked = 3 };

/// Ends a command with a message for the user (UTF-8) and an exit status.
class Failure : public std::runtime_error {
 public:
  explicit Failure(const std::string& message, ExitStatus status = ExitStatus::Unusable)
      : std::runtime_error(message), status_(status) {}
  [[nodiscard]] ExitStatus Status() const { return status_; }

 private:
  ExitStatus status_;
};

/// The size of a terminal, in characters.
struct TerminalSize {
  std::size_t columns = 80;
  std::size_t rows = 24;
};

/// Where a command reads and writes. Output is UTF-8.
struct Streams {
  std::istream& in;
  std::ostream& out;
  std::ostream& err;
  bool asks = false;         ///< somebody can answer at `in`
  bool animates = false;     ///< `err` is a terminal
  bool movesCursor = false;  ///< that terminal knows codes that move the cursor

  /// Reads a line while the terminal does not show what is typed; nothing at the end of the input.
  std::function<std::optional<std::string>()> readSecret{};
  std::string password{};  ///< for logins when nobody is there to ask (UTF-8)

  /// Waits until `in` can be read; false when the program is told to end first.
  std::function<bool()> awaitInput{};

  bool colours = false;                ///< `out` is a terminal that shows colours
  CiSystem ci = CiSystem::None;        ///< reads the output
  std::ostream* commandOut = nullptr;  ///< takes commands for it; null without one
  std::ostream* commandErr = nullptr;

  std::function<TerminalSize()> terminalSize{};  ///< of `err`; unset where that is unknown
};

/// The surroundings of every command: the streams, the options that hold for all, and the way to
/// its host.
struct Frame {
  Streams streams;
  HostFactory makeHost;
  std::string commandLine{};  ///< of this program, in UTF-8
  std::optional<std::string> prefix{};
  bool json = false;
  bool yes = false;
  bool no = false;
  ExitStatus status = ExitStatus::Done;
};

}  // namespace gorbex::cli
