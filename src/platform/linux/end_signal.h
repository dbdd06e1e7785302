#pragma once

#include <chrono>

namespace gorbex {

/// The system's wish that the program end (SIGTERM, SIGINT, SIGHUP). There is one for the whole
/// program.
class EndSignal {
 public:
  /// From now on it is obeyed at once, and what the program started ends too.
  static void Obey();

  /// From now on it is noted. A second one is obeyed.
  static void Listen();
  [[nodiscard]] static bool Wanted();

  /// Waits for the time, but not on when the end is wanted.
  static void Wait(std::chrono::milliseconds time);
};

}  // namespace gorbex
