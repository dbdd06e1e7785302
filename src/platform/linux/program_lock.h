#pragma once

#include <filesystem>
#include <functional>
#include <memory>

#include "platform/linux/host_file.h"

namespace gorbex {

/// Keeps every other program of a prefix from the same work while the lock lives.
class ProgramLock {
 public:
  /// The file to lock for a build. All programs of a prefix write result logs of the same names, so
  /// that one could take another's results for its own.
  static std::filesystem::path ToBuild(const std::filesystem::path& prefixRoot);

  /// The file to lock for a change of a stored file: reading the whole, changing a part, storing it
  /// again.
  static std::filesystem::path ToChange(const std::filesystem::path& prefixRoot);

  /// Waits while another program holds the lock, and calls `onWait` before it does. Goes on without
  /// a lock where none can be made, or when the program is told to end.
  ProgramLock(const std::filesystem::path& file, const std::function<void()>& onWait);

  /// Nothing when another program holds the lock.
  [[nodiscard]] static std::shared_ptr<ProgramLock> Try(const std::filesystem::path& file);

  /// As Try, for a build of the product in that folder, whatever prefix the other program uses. The
  /// folder itself is locked, so nothing is left in it.
  [[nodiscard]] static std::shared_ptr<ProgramLock> TryProduct(const std::filesystem::path& folder);

 private:
  enum class State { Free, Taken };

  explicit ProgramLock(int file) : file_(file) {}
  [[nodiscard]] State Take() const;

  Descriptor file_;
};

}  // namespace gorbex
