#pragma once

#include <cstddef>
#include <cstdint>
#include <optional>
#include <string>
#include <vector>

#include "build/project_value.h"
#include "core/activity_log.h"
#include "core/signal.h"
#include "platform/file_system.h"

namespace gorbex {

/// A value of a project file that a run replaces for the time of a compile.
struct ReplacedValue {
  std::string key;
  std::int32_t before = 0;
  std::int32_t during = 0;
};

/// Remembers on disk, in the program's folder, what must be written back into project files, so
/// that a run which is killed does not leave a release as a debug build. Only the program that has
/// the turn to build may call the functions that change something.
class ReplacedValues {
 public:
  ReplacedValues(FileSystem& files, ActivityLog& log, const std::string& programFolder);

  /// Notes values before they are replaced. A value that is noted already stays. Raises the file
  /// system's error when the note cannot be written.
  void Note(const std::string& projectFile, const std::vector<ReplacedValue>& values);

  /// Forgets the values of a project that has its own again; those that could not be written back
  /// stay noted.
  void Settle(const std::string& projectFile);

  /// Forgets the values of a project that keeps its present ones.
  void Forget(const std::string& projectFile);

  /// Whether anything is noted, also by another running program.
  [[nodiscard]] bool Any() const;

  /// Writes back what a killed run has left, wherever the file still has what that run wrote there.
  /// Values that cannot be written stay noted. Each file is reported and logged.
  void WriteBack();

  Signal<std::string> told;

 private:
  struct Entry {
    std::string projectFile;
    ReplacedValue value;
  };
  using Entries = std::vector<Entry>;

  [[nodiscard]] Entries Noted() const;
  void Store(const Entries& entries);

  /// The place in a project's text of the value that a build wrote; nothing when another value is
  /// there.
  [[nodiscard]] static std::optional<ValuePlace> PlaceOf(const Entry& entry,
                                                         const std::string& text);
  [[nodiscard]] bool Mended(const std::string& projectFile, const Entries& entries);
  void Tell(const std::string& line);

  FileSystem& files_;
  ActivityLog& log_;
  std::string file_;
};

}  // namespace gorbex
