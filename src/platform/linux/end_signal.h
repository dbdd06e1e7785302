#pragma once

#include <chrono>

namespace gorbex {

/// The system's wish that the program end (SIGTERM, SIGINT, SIGHUP). There is one for the whole
/// program.
class EndSignal {
 public:
  /// From now on a signal ends the program at once, with everything that it started.
  static void Obey();

  /// From now on the first signal is noted; the next one ends the program. Returns a descriptor
  /// that can be read from after the first signal; this class owns it. Returns -1 when the system
  /// gave none: then nothing is noted.
  static int Listen();
  [[nodiscard]] static bool Wanted();

  /// Waits for the time, or until the end is wanted.
  static void Wait(std::chrono::milliseconds time);
};

}  // namespace gorbex
