#pragma once

#include <functional>
#include <memory>
#include <string>

#include "platform/windows/handle.h"

namespace gorbex {

/// Keeps every other program of an installation from the same work while the lock lives.
class ProgramLock {
 public:
  /// The file to lock for a build. All programs of an installation write result logs of the same
  /// names, so that one could take another's results for its own.
  static std::string ToBuild(const std::string& programFolder);

  /// The file to lock for a change of a stored file: reading the whole, changing a part, storing it
  /// again.
  static std::string ToChange(const std::string& programFolder);

  /// Waits while another program holds the lock, and calls `onWait` before it does. Goes on without
  /// a lock where none can be made, or when the program is told to end.
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
