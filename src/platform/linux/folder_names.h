#pragma once

#include <sys/stat.h>

#include <mutex>
#include <optional>
#include <string>
#include <string_view>
#include <unordered_map>

namespace gorbex {

/// The names in folders of the host, found without regard to letter case. A folder that has not
/// changed since it was read is not read again: the program often looks for missing files, and
/// reading a large folder takes long.
class FolderNames {
 public:
  struct Look {
    bool hasFolder = false;  ///< false only when there is none
    std::optional<std::string> name{};
  };

  /// The host's name, in the folder of that host path, of a name in the code page: the same name,
  /// or else the first in byte order of those that differ only in letter case, so that the answer
  /// is stable.
  [[nodiscard]] Look Find(const std::string& folder, std::string_view name);

 private:
  /// The contents of a folder when it was read.
  struct Folder {
    struct stat info {};
    bool mayHaveChanged = true;                            ///< its time was too fresh to tell
    std::unordered_map<std::string, std::string> names{};  ///< by their form in small letters

    [[nodiscard]] bool IsCurrent(const struct stat& now) const;
  };

  static std::optional<Folder> Read(const std::string& path);

  std::mutex mutex_;
  std::unordered_map<std::string, Folder> folders_;
};

}  // namespace gorbex
