#pragma once

#include <chrono>

namespace gorbex {

/// The system's wish that the program end (Ctrl+C, Ctrl+Break, the console's close, the end of the
/// user's session), noted instead of obeyed at once. A second one ends the program. There is one
/// for the whole program.
class EndSignal {
 public:
  static void Listen();
  [[nodiscard]] static bool Wanted();

  /// Waits for the time, or until the end is wanted.
  static void Wait(std::chrono::milliseconds time);
};

}  // namespace gorbex
