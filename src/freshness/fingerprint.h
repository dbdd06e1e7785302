#pragma once

#include <cstdint>
#include <optional>

#include "platform/content_hash.h"

namespace gorbex {

/// The data of a file that are known without reading it.
struct FileStamp {
  std::uint64_t size = 0;
  std::uint64_t ticks = 0;  ///< of its last change
  std::uint64_t identity = 0;

  bool operator==(const FileStamp&) const = default;
};

/// A fingerprint of a file's contents: tells later whether they are still the same.
struct Fingerprint {
  enum class State { Missing, Unreadable, Read };

  State state = State::Missing;
  ContentHash hash{};
  /// The stamp of the file when it was read; nothing when it had changed so recently that a second
  /// change could leave the same stamp.
  std::optional<FileStamp> stamp{};

  /// Whether both are of readable files with the same contents.
  [[nodiscard]] bool Matches(const Fingerprint& other) const {
    return state == State::Read && other.state == State::Read && hash == other.hash;
  }

  bool operator==(const Fingerprint&) const = default;
};

}  // namespace gorbex
