#pragma once

#include <sys/stat.h>

#include <cstdint>
#include <mutex>
#include <optional>
#include <string>
#include <string_view>
#include <unordered_map>

namespace gorbex {

/// The names in folders of the host, found without regard to letter case. A folder that has not
/// changed since it was read is not read again: files that are missing are looked for often, and
/// each look would take as long as the folder is large.
class FolderNames {
 public:
  struct Look {
    bool hasFolder = false;  ///< false only when there is none
    std::optional<std::string> name{};
  };

  /// The name in the folder, both given and found in the host's form and folder's path, that stands
  /// for a name in the code page: that very one, or of those that differ from it in letter case
  /// alone the first in byte order, so that the answer is stable.
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
