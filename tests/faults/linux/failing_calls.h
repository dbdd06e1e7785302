#pragma once

#include "tests/faults/fault_plan.h"

namespace gorbex::test {

/// Lets one of this program's own calls to the system fail, as a disk or a user's rights would. The
/// linker leads the calls that open, read, change, lock and rename files here. There is one at a
/// time.
class FailingCalls {
 public:
  enum class Kind {
    Error,       ///< the call fails with the error
    ShortWrite,  ///< a write takes half, and the next one fails with the error; else as Error
  };

  FailingCalls(int failing, int error, Kind kind = Kind::Error);
  ~FailingCalls();
  FailingCalls(const FailingCalls&) = delete;
  FailingCalls& operator=(const FailingCalls&) = delete;

  [[nodiscard]] int Count() const { return plan_.count; }

  /// Whether the present call is to fail; the error is in errno then.
  [[nodiscard]] bool Strikes();

  /// How much of a write the disk takes; nothing less than 0.
  [[nodiscard]] bool Halves() const { return kind_ == Kind::ShortWrite && !isHalved_; }
  void Halved();

  /// The one at work; null when there is none.
  static FailingCalls* Now();

 private:
  FaultPlan plan_;
  int error_;
  Kind kind_;
  bool isHalved_ = false;
};

}  // namespace gorbex::test
