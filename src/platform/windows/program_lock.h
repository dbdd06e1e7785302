#pragma once

#include <functional>
#include <memory>
#include <string>

#include "platform/windows/handle.h"

namespace gorbex {

/// Work that only one program at a time may do in an installation: this one, while the lock
/// lives.
class ProgramLock {
 public:
  /// A build run: all runs of an installation share one result log, so a second one would take the
  /// first one's results for its own.
  static std::string ToBuild(const std::string& programFolder);

  /// Reading what is stored as a whole, changing a part of it and storing it again.
  static std::string ToChange(const std::string& programFolder);

  /// Waits while another program holds the lock, and calls `onWait` before it does. Without effect
  /// where no lock can be made, or when the program is told to end.
  ProgramLock(const std::string& file, const std::function<void()>& onWait);

  /// Nothing when another program holds the lock.
  [[nodiscard]] static std::shared_ptr<ProgramLock> Try(const std::string& file);

  /// As Try, for a build of the product in that folder, by any program of this machine that names
  /// the folder alike. Nothing is left in it.
  [[nodiscard]] static std::shared_ptr<Handle> TryProduct(const std::string& folder);

 private:
  enum class State { Free, Taken };

  explicit ProgramLock(const std::string& file);
  [[nodiscard]] State Take() const;

  Handle file_;
};

}  // namespace gorbex
