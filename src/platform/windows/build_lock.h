#pragma once

#include <functional>
#include <string>

#include "platform/windows/handle.h"

namespace gorbex {

/// Held during a build run: all runs of an installation share one result log, so a second one would
/// take the first one's results for its own.
class BuildLock {
 public:
  /// Waits while another program holds the lock, and calls `onWait` before it does. Without effect
  /// where no lock can be made.
  BuildLock(const std::string& programFolder, const std::function<void()>& onWait);

 private:
  Handle file_;
};

}  // namespace gorbex
