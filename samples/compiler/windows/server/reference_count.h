#pragma once

#include <windows.h>

namespace gorbex::standin {

/// Counts the uses that keep the component's code loaded.
class CodeUse {
 public:
  CodeUse() { InterlockedIncrement(&count_); }
  ~CodeUse() { InterlockedDecrement(&count_); }
  CodeUse(const CodeUse&) = delete;
  CodeUse& operator=(const CodeUse&) = delete;

  [[nodiscard]] static bool IsNeeded() { return count_ != 0; }

  /// For clients that keep the code without having an object.
  static void Lock(bool isLocked) {
    if (isLocked) InterlockedIncrement(&count_);
    if (!isLocked) InterlockedDecrement(&count_);
  }

 private:
  static inline LONG count_ = 0;
};

/// The references to one object, which goes with the last of them.
class ReferenceCount {
 public:
  ULONG Add() { return static_cast<ULONG>(InterlockedIncrement(&count_)); }
  ULONG Take() { return static_cast<ULONG>(InterlockedDecrement(&count_)); }

 private:
  LONG count_ = 1;
  CodeUse use_;
};

}  // namespace gorbex::standin
