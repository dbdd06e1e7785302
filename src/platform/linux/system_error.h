#pragma once

#include <cerrno>
#include <system_error>

namespace gorbex {

/// Throws an error with one of the system's numbers.
[[noreturn]] inline void RaiseSystemError(int number) {
  throw std::system_error(number, std::generic_category());
}

/// Throws the error of the system's last call when that has not succeeded.
inline void RequireSuccess(bool succeeded) {
  if (!succeeded) RaiseSystemError(errno);
}

}  // namespace gorbex
