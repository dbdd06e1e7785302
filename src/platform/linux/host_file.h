#pragma once

#include <sys/stat.h>

#include <cstddef>
#include <optional>
#include <string>

namespace gorbex {

// Whole files of the host, by host path. Failures are std::system_error with the system's number.

inline constexpr std::size_t kLargestFile = std::size_t{512} << 20U;

/// Owns a descriptor.
class Descriptor {
 public:
  explicit Descriptor(int number) : number_(number) {}
  ~Descriptor();
  Descriptor(const Descriptor&) = delete;
  Descriptor& operator=(const Descriptor&) = delete;

  [[nodiscard]] int Number() const { return number_; }

 private:
  int number_;
};

/// Fails with ENODEV for anything but a plain file (never waits for a pipe), with ENOMEM when too
/// large.
[[nodiscard]] std::string ReadHostFile(const std::string& path);

/// As ReadHostFile; nothing when there is no such file.
[[nodiscard]] std::optional<std::string> ReadHostFileIfThere(const std::string& path);

/// Whether a new file is on the disk before it takes the place of the old one.
enum class Flush { Wait, Later };

/// Puts a new file in the place of the old one, which stays complete when anything fails. A
/// symbolic link stays and its target is replaced. An old file hands down its mode; a new one gets
/// the mode given.
void ReplaceHostFile(const std::string& path, const std::string& bytes, mode_t newFileMode,
                     Flush flush = Flush::Wait);

/// Adds at the end with one system write, all or nothing; fails with ENODEV for anything but a
/// plain file.
void AppendHostFile(const std::string& path, const std::string& bytes);

/// As AppendHostFile, to a file that is there and may be written, even if only by its mode; false
/// when it is not.
[[nodiscard]] bool AppendToHostFile(const std::string& path, const std::string& bytes);

}  // namespace gorbex
