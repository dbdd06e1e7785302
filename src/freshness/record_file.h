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

/// The records of all builds, in one file of the program's folder. Each record is one line, added
/// at the end; the last one for a project and its output counts. Each input that many projects
/// share has its own line, before the first record that names it. Several programs may add lines at
/// the same time. Lines that cannot be understood are ignored.
class RecordFile {
 public:
  RecordFile(FileSystem& files, std::string path) : files_(files), path_(std::move(path)) {}

  /// The record of the last build of a project into a place; letter case does not matter.
  [[nodiscard]] std::optional<BuildRecord> Find(const std::string& project,
                                                const std::string& output);

  /// Whether there is a record of the project, for any output.
  [[nodiscard]] bool Knows(const std::string& project);

  /// Adds a record. Raises the file system's error when it cannot be written; the earlier records
  /// then still count.
  void Add(const BuildRecord& record);

  /// To be called when another program may have added lines.
  void LookAgain() { mayBeOld_ = true; }

 private:
  /// A build's line in text_.
  struct Place {
    std::string output;  ///< in small letters
    std::size_t start = 0;
    std::size_t size = 0;
  };
  using Places = std::vector<Place>;

  void Follow();
  void Load();
  void TakeLines(std::size_t from);
  void TakeLine(std::size_t start, std::size_t size);
  void TakeShared(std::string_view line);
  void Forget(Places& places, Places::iterator place);
  [[nodiscard]] std::string LinesOf(const BuildRecord& record) const;
  [[nodiscard]] SharedInput SharedWith(LineId id) const;
  void CompactWhenLong();

  FileSystem& files_;
  std::string path_;
  std::string text_;                ///< the whole file
  std::optional<FileInfo> loaded_;  ///< how the file looked when it was loaded
  bool isLoaded_ = false;
  bool mayBeOld_ = true;
  std::unordered_map<std::string, Places> places_;  ///< by project in small letters
  std::unordered_map<LineId, SharedInput> shared_;
  std::size_t inForce_ = 0;      ///< bytes of the records that count
  std::size_t sharedBytes_ = 0;  ///< of all lines of shared inputs
};

}  // namespace gorbex
