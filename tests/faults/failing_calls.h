#pragma once

#include <vector>

namespace gorbex::test {

/// A way in which a call to the system can fail.
struct Fault {
  enum class Kind {
    Error,       ///< any call fails with the error
    ShortWrite,  ///< a write takes half, and the next one fails with the error
    LostFile,    ///< a file that is to be replaced is gone, and then the call fails with the error
  };
  int error = 0;  ///< the system's number
  Kind kind = Kind::Error;
};

/// Each call of a sweep fails with the next of them; after the last comes the first again.
using FaultsInTurn = std::vector<Fault>;

/// Lets one of this program's own calls to the system fail, as a disk or a user's rights would. The
/// linker leads the calls that open, read, change, lock and rename files here (wrapped_calls.cpp of
/// each system). There is one at a time.
class FailingCalls {
 public:
  FailingCalls(int failing, const Fault& fault);
  ~FailingCalls();
  FailingCalls(const FailingCalls&) = delete;
  FailingCalls& operator=(const FailingCalls&) = delete;

  /// The calls until now that can fail in the way of the fault.
  [[nodiscard]] int Count() const { return count_; }

  /// Whether the present call is to fail, and how; null when it is to succeed.
  static const Fault* Strikes(Fault::Kind kind = Fault::Kind::Error);

  /// Whether calls are made to fail in that way.
  static bool Tries(Fault::Kind kind);

  /// As Strikes, for a write. When it is to take only half, `size` is halved and it succeeds.
  template <class Size>
  static const Fault* StrikesWrite(Size& size) {
    if (const Fault* fault = FailsRest()) return fault;
    if (size > 1 && Strikes(Fault::Kind::ShortWrite) != nullptr) {
      size /= 2;
      return ExpectRest();
    }
    return Strikes();
  }

 private:
  static const Fault* FailsRest();
  static const Fault* ExpectRest();

  int failing_;  ///< the number of the call that is to fail; 0 for none
  int count_ = 0;
  Fault fault_;
  bool failsRest_ = false;
};

}  // namespace gorbex::test
