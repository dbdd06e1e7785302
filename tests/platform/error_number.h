#pragma once

#include <functional>

#include "platform/runtime_error.h"

namespace gorbex::test {

/// The number of the error that an action raises; 0 when it raises none.
inline int NumberOf(const std::function<void()>& action) {
  try {
    action();
  } catch (const RuntimeError& error) {
    return error.Number();
  }
  return 0;
}

}  // namespace gorbex::test
