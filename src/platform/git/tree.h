#pragma once

#include <map>
#include <optional>
#include <string>
#include <string_view>
#include <vector>

namespace gorbex {

/// The folders and files of one commit. Paths are in the code page with "/" between their names; a
/// file that no Windows path can name is left out.
class GitTree {
 public:
  struct Entry {
    std::string path;  ///< as git spells it; empty for the top
    bool isFolder = false;
    bool isInDatabase = true;  ///< false for what is only in the working tree
  };

  /// From the answer of "ls-tree -r -t -z".
  explicit GitTree(std::string_view listing);

  /// An exact match first, then one without regard to letter case.
  [[nodiscard]] std::optional<Entry> Find(const std::string& path) const;

  [[nodiscard]] std::vector<Entry> Children(const std::string& folder) const;

  /// The submodule, a separate repository, that holds the path or is it; empty when there is
  /// none.
  [[nodiscard]] std::string SubmoduleOf(const std::string& path) const;

 private:
  std::map<std::string, bool> isFolder_;
  std::map<std::string, std::string> byLowerCase_;
  std::vector<std::string> submodules_;
};

}  // namespace gorbex
