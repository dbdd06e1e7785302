#pragma once

#include <filesystem>
#include <functional>
#include <memory>

#include "platform/linux/host_file.h"

namespace gorbex {

/// Work that only one program at a time may do in a prefix: this one, while the lock lives.
class ProgramLock {
 public:
  /// A build run: all runs of a prefix share one result log, so a second one would take the first
  /// one's results for its own.
  static std::filesystem::path ToBuild(const std::filesystem::path& prefixRoot);

  /// Reading what is stored as a whole, changing a part of it and storing it again.
  static std::filesystem::path ToChange(const std::filesystem::path& prefixRoot);

  /// Waits while another program holds the lock, and calls `onWait` before it does. Without effect
  /// where no lock can be made, or when the program is told to end.
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
