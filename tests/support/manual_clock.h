#pragma once

#include "platform/clock.h"
#include "platform/file_system.h"

namespace gorbex::test {

/// A clock that only moves when told to.
class ManualClock : public Clock {
 public:
  CivilTime now{2026, 3, 4, 15, 6, 7};
  std::chrono::milliseconds elapsed{0};
  FileTime fileTime{134'000'000'000'000'000};  ///< the stamp of files written now

  [[nodiscard]] CivilTime LocalNow() const override { return now; }
  [[nodiscard]] std::chrono::milliseconds Elapsed() const override { return elapsed; }

  /// Moves the elapsed time and the file time; the date and time of day stay as set.
  void Advance(std::chrono::milliseconds step);
};

}  // namespace gorbex::test
