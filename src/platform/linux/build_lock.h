#pragma once

#include <filesystem>
#include <functional>

#include "platform/linux/host_file.h"

namespace gorbex {

/// Held during a build run: all runs of a prefix share one result log, so a second one would take
/// the first one's results for its own.
class BuildLock {
 public:
  /// Waits while another program holds the lock, and calls `onWait` before it does. Without effect
  /// where no lock can be made, or when the program is told to end.
  BuildLock(const std::filesystem::path& prefixRoot, const std::function<void()>& onWait);

 private:
  Descriptor file_;
};

}  // namespace gorbex
