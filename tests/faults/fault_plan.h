#pragma once

namespace gorbex::test {

/// Which of the operations that a run counts is to fail.
struct FaultPlan {
  int failing = 0;  ///< from 1; 0 for none
  int count = 0;    ///< operations until now

  /// Counts one operation and tells whether it is the one.
  [[nodiscard]] bool Strikes() { return ++count == failing; }
};

}  // namespace gorbex::test
