#pragma once

#include <windows.h>

#include <system_error>

namespace gorbex {

/// Throws an error with one of the system's numbers.
[[noreturn]] inline void RaiseSystemError(DWORD number) {
  throw std::system_error(static_cast<int>(number), std::system_category());
}

/// Throws the error of the system's last call when that has not succeeded.
inline void RequireSuccess(bool succeeded) {
  if (!succeeded) RaiseSystemError(GetLastError());
}

}  // namespace gorbex
