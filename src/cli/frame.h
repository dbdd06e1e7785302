#pragma once

#include <chrono>
#include <functional>
#include <iosfwd>
#include <memory>
#include <optional>
#include <stdexcept>
#include <string>
#include <string_view>
#include <thread>

#include "platform/event_pump.h"
#include "platform/services.h"

namespace gorbex::cli {

enum class ExitStatus { Done = 0, WorkFailed = 1, Unusable = 2, NothingChecked = 3 };

/// Ends a command with a message for the user (UTF-8) and an exit status.
class Failure : public std::runtime_error {
 public:
  Failure(ExitStatus status, const std::string& message)
      : std::runtime_error(message), status_(status) {}
  [[nodiscard]] ExitStatus Status() const { return status_; }

 private:
  ExitStatus status_;
};

/// The system that the command line runs on.
class Host {
 public:
  virtual ~Host() = default;

  [[nodiscard]] virtual PlatformServices Services(EventPump& events) = 0;

  /// The program's path form of a path as the user typed it: a path of the host, or a Windows path.
  /// Error 52 when it holds characters that no path of the program can hold.
  [[nodiscard]] virtual std::string ProgramPath(const std::string& typed) const = 0;

  /// Keeps other programs from building on the same system until the result is let go of. Null
  /// while another program builds.
  [[nodiscard]] virtual std::shared_ptr<void> BuildAlone() { return std::make_shared<int>(); }

  /// Keeps other programs from changing build projects on the same system until the result is let
  /// go of. Calls `onWait` before it waits for one that does so already.
  [[nodiscard]] virtual std::shared_ptr<void> ChangeAlone(const std::function<void()>& /*onWait*/) {
    return nullptr;
  }

  /// From now on the system's wish that the program end is noted instead of ending it at once.
  virtual void ListenForEnd() {}
  [[nodiscard]] virtual bool EndWanted() const { return false; }

  /// Waits, but not on when the end is wanted.
  virtual void Wait(std::chrono::milliseconds time) { std::this_thread::sleep_for(time); }
};

/// Makes the host for the prefix named on the command line, if any.
using HostFactory = std::function<std::unique_ptr<Host>(const std::optional<std::string>& prefix)>;

/// Where a command reads and writes. Output is UTF-8.
struct Streams {
  std::istream& in;
  std::ostream& out;
  std::ostream& err;
  bool asks = false;      ///< somebody can answer at `in`
  bool animates = false;  ///< `err` is a terminal

  /// Reads a line that the terminal does not show; nothing at the end of the input.
  std::function<std::optional<std::string>()> readSecret{};
  std::string password{};  ///< for logins when nobody is there to ask (UTF-8)

  /// Waits until `in` can be read; false when the program is told to end first.
  std::function<bool()> awaitInput{};
};

/// The surroundings of every command: the streams, the options that hold for all, and the way to
/// its host.
struct Frame {
  Streams streams;
  HostFactory makeHost;
  std::optional<std::string> prefix{};
  bool json = false;
  bool yes = false;
  bool no = false;
  ExitStatus status = ExitStatus::Done;
};

}  // namespace gorbex::cli
