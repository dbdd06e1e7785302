#pragma once

#include <string>
#include <unordered_map>

#include "platform/file_system.h"

namespace gorbex {

/// Knows which files exist, by one listing of each folder. Nothing here raises an error.
class DiskNames {
 public:
  explicit DiskNames(const FileReader& files) : files_(files) {}

  struct Entry {
    bool isFolder = false;
    std::string name{};   ///< as the folder has it; empty when the folder cannot be listed
    std::string other{};  ///< another name in the folder that differs in letter case only
  };
  using Names = std::unordered_map<std::string, Entry>;  ///< by name in small letters

  /// Null when there is nothing at the full path.
  [[nodiscard]] const Entry* Find(const std::string& path);

  /// The entries of a folder that can be reached; none when it cannot be listed.
  [[nodiscard]] const Names& In(const std::string& folder) { return NamesIn(folder); }

 private:
  [[nodiscard]] Names& NamesIn(const std::string& folder);
  [[nodiscard]] Names Listed(const std::string& folder) const;

  const FileReader& files_;
  std::unordered_map<std::string, Names> folders_;  ///< by path in small letters
};

}  // namespace gorbex
