#pragma once

#include <cstddef>
#include <optional>
#include <string>
#include <string_view>
#include <unordered_map>
#include <vector>

#include "freshness/build_record.h"
#include "platform/file_system.h"

namespace gorbex {

/// The records of all builds, in one file of the program's folder: one line each, added at the end,
/// the last one of a project and its output in force. Several programs may add lines at the same
/// time. Whatever cannot be understood counts as not there.
class RecordFile {
 public:
  RecordFile(FileSystem& files, std::string path) : files_(files), path_(std::move(path)) {}

  /// The record of the last build of a project into a place; letter case does not matter.
  [[nodiscard]] std::optional<BuildRecord> Find(const std::string& project,
                                                const std::string& output);

  /// Whether the project was ever built, wherever to.
  [[nodiscard]] bool Knows(const std::string& project);

  /// Adds records. Raises the file system's error when they cannot be written; then those before
  /// stay in force.
  void Add(const std::vector<BuildRecord>& records);

 private:
  /// A build's line in text_.
  struct Place {
    std::string output;  ///< in small letters
    std::size_t start = 0;
    std::size_t size = 0;
  };

  void Follow();
  void Load();
  void TakeLines(std::size_t from);
  void TakeLine(std::size_t start, std::size_t size);
  void Compact();

  FileSystem& files_;
  std::string path_;
  std::string text_;                ///< the whole file
  std::optional<FileInfo> loaded_;  ///< how the file looked then
  bool isLoaded_ = false;
  std::unordered_map<std::string, std::vector<Place>> places_;  ///< by project in small letters
  std::size_t inForce_ = 0;                                     ///< bytes of the lines in force
};

}  // namespace gorbex
