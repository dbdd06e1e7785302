#pragma once

#include <cstdint>
#include <optional>
#include <string>
#include <string_view>
#include <vector>

#include "platform/windows_path.h"

namespace gorbex {

/// The system's file time: 100-nanosecond steps since 1 January 1601, Coordinated Universal Time.
struct FileTime {
  std::uint64_t ticks = 0;
  auto operator<=>(const FileTime&) const = default;
};

/// File attributes, a sum of these values.
namespace file_attribute {
inline constexpr std::uint32_t kNormal = 0;
inline constexpr std::uint32_t kReadOnly = 1;
inline constexpr std::uint32_t kHidden = 2;
inline constexpr std::uint32_t kSystem = 4;
inline constexpr std::uint32_t kArchive = 32;
}  // namespace file_attribute

struct FileInfo {
  bool isFolder = false;
  std::uint32_t attributes = file_attribute::kNormal;
  std::uint64_t size = 0;             ///< bytes; 0 for a folder
  std::optional<FileTime> lastWrite;  ///< nothing when the times cannot be read

  /// Changes when another file takes the place of this one and, where the system can tell, when the
  /// file's bytes change.
  std::uint64_t identity = 0;
};

struct FolderEntry {
  std::string name;
  bool isFolder = false;
  bool isLink = false;  ///< a link to a file or folder elsewhere

  /// False when no path can name it; the name then has "?" for each character that is not in the
  /// code page.
  bool isReachable = true;
};

/// The right to look at files. All paths are Windows paths in the code page's bytes; letter case
/// does not matter.
class FileReader {
 public:
  virtual ~FileReader() = default;

  /// The file or folder at the path; nothing when there is none (an empty or impossible path
  /// included).
  [[nodiscard]] virtual std::optional<FileInfo> Look(const std::string& path) const = 0;

  /// As Look, for paths that start from a folder: faster for many files in the same one.
  [[nodiscard]] virtual std::vector<std::optional<FileInfo>> LookIn(
      const std::string& folder, const std::vector<std::string_view>& names) const {
    std::vector<std::optional<FileInfo>> found;
    found.reserve(names.size());
    for (const auto name : names) found.push_back(Look(ResolvedPath(folder, name)));
    return found;
  }

  /// The whole file, byte for byte. Errors: 53 no such file, 76 no such folder, 75 a folder or no
  /// plain file, 70 access denied, 7 too large, 57 device error, 52 impossible name.
  [[nodiscard]] virtual std::string Read(const std::string& path) const = 0;

  /// The entries of a folder in the system's own order, without "." and "..". Error 76 when there
  /// is no such folder, 75 when it cannot be read.
  [[nodiscard]] virtual std::vector<FolderEntry> List(const std::string& folder) const = 0;
};

/// The right to change files. A read-only file refuses Write, Append and Remove with error 75.
class FileSystem : public FileReader {
 public:
  /// Replaces the whole file, making it when absent. Whatever happens the file is then whole: old
  /// or new. Errors: 76, 75, 70, 61 disk full, 57, 52.
  virtual void Write(const std::string& path, const std::string& bytes) = 0;

  /// As Write(), but the system decides when the new text reaches the disk, and a crash of the
  /// system before that may lose the file. For many files in a row whose contents are also
  /// elsewhere.
  virtual void WriteUnsynced(const std::string& path, const std::string& bytes) {
    Write(path, bytes);
  }

  /// Adds bytes at the end in one system write, making the file when absent. Errors as Write.
  virtual void Append(const std::string& path, const std::string& bytes) = 0;

  /// Errors: 53 no such file, 75 read-only or a folder, 70.
  virtual void Remove(const std::string& path) = 0;

  /// Errors: 53 no such file, 70.
  virtual void SetAttributes(const std::string& path, std::uint32_t attributes) = 0;

  /// Makes only the last folder of the path. Errors: 76 no parent, 75 exists already, 70.
  virtual void CreateFolder(const std::string& path) = 0;
};

[[nodiscard]] inline bool FileExists(const FileReader& files, const std::string& path) {
  const auto info = files.Look(path);
  return info && !info->isFolder;
}

[[nodiscard]] inline bool FolderExists(const FileReader& files, const std::string& path) {
  const auto info = files.Look(path);
  return info && info->isFolder;
}

}  // namespace gorbex
