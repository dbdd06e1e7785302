#pragma once

#include <chrono>
#include <functional>
#include <memory>
#include <optional>
#include <string>
#include <thread>

#include "platform/services.h"

namespace gorbex {

/// The system as a front end needs it: services, typed paths, and the wish to end the program.
class Host {
 public:
  virtual ~Host() = default;

  /// The services with the front end's own event pump; valid as long as the host and the pump.
  [[nodiscard]] virtual PlatformServices Services(EventPump& events) = 0;

  /// The program's path form of a path as the user typed it in UTF-8: a path of the host, or a
  /// Windows path. Error 52 when it holds characters that no path of the program can hold.
  [[nodiscard]] virtual std::string TypedPath(const std::string& typed) const = 0;

  /// The program's path of a file that the host calls by a UTF-8 path; nothing when no path of the
  /// program can name it.
  [[nodiscard]] virtual std::optional<std::string> ProgramPath(
      const std::string& hostPath) const = 0;

  /// The host's UTF-8 path of a file or folder of the program; empty when it has none.
  [[nodiscard]] virtual std::string HostPath(const std::string& /*programPath*/) const {
    return {};
  }

  /// The host's UTF-8 path of the folder where the first file dialog begins; empty lets the system
  /// choose.
  [[nodiscard]] virtual std::string FirstFolder() const { return {}; }

  /// Keeps other programs from changing build projects on the same system until the result is
  /// released. Calls `onWait` before it waits for a program that does so already.
  [[nodiscard]] virtual std::shared_ptr<void> ChangeAlone(const std::function<void()>& /*onWait*/) {
    return nullptr;
  }

  /// From now on the system's wish that the program end is noted instead of ending it at once.
  virtual void ListenForEnd() {}
  [[nodiscard]] virtual bool EndWanted() const { return false; }

  /// Waits for the time, or until the end is wanted.
  virtual void Wait(std::chrono::milliseconds time) { std::this_thread::sleep_for(time); }
};

/// Makes the host for the prefix named on the command line, if any. Error 5 where there are none.
using HostFactory = std::function<std::unique_ptr<Host>(const std::optional<std::string>& prefix)>;

/// A variable of this program's environment in UTF-8; nothing when it is not set or empty.
[[nodiscard]] std::optional<std::string> Environment(const char* name);

/// Takes a variable out of the environment, so that what this program starts does not inherit it.
/// Its text, or an empty one.
std::string TakeFromEnvironment(const char* name);

/// The host's UTF-8 path of the program that runs; empty when the host does not tell.
[[nodiscard]] std::string OwnProgram();

/// The variable with the password for logins when nobody is there to ask.
inline constexpr const char* kPasswordVariable = "GORBEX_SCC_PASSWORD";

}  // namespace gorbex
