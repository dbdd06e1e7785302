#pragma once

#include <chrono>

namespace gorbex {

/// The system's wish that the program end (SIGTERM, SIGINT, SIGHUP). There is one for the whole
/// program.
class EndSignal {
 public:
  /// From now on it ends the program at once, with everything that it started.
  static void Obey();

  /// From now on the first one is noted; the next one ends the program. The descriptor can be read
  /// from when there is one, and stays this class's own; -1 when the system gave none, and nothing
  /// is noted.
  static int Listen();
  [[nodiscard]] static bool Wanted();

  /// Waits for the time, but not on when the end is wanted.
  static void Wait(std::chrono::milliseconds time);
};

}  // namespace gorbex
