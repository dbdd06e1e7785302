#pragma once

#include <windows.h>

#include <oaidl.h>

#include <string>

#include "platform/runtime_error.h"

namespace gorbex {

/// Error 440 for a call of an object's member that failed without a message.
[[nodiscard]] RuntimeError AutomationFailure(HRESULT result, const std::string& member);

/// An object's report of its failure, with what that owns.
class AutomationException {
 public:
  AutomationException() = default;
  ~AutomationException();
  AutomationException(const AutomationException&) = delete;
  AutomationException& operator=(const AutomationException&) = delete;

  EXCEPINFO* Place() { return &info_; }

  /// The object's own words and number.
  [[nodiscard]] RuntimeError Error(const std::string& member);

 private:
  [[nodiscard]] ErrorNumber Number() const;

  EXCEPINFO info_{};
};

}  // namespace gorbex
