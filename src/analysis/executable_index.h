#pragma once

#include <array>
#include <cstddef>
#include <cstdint>
#include <optional>
#include <string>
#include <string_view>
#include <unordered_map>
#include <vector>

#include "core/member.h"

namespace gorbex {

/// Finds which project builds a binary, by the names of all built binaries at once: a trie over the
/// lower-cased `EXEName`s. One look costs time by the length of the text, not by the number of
/// projects.
class ExecutableIndex {
 public:
  struct Entry {
    std::size_t rank = 0;
    const clsMember* member = nullptr;
  };

  ExecutableIndex();

  /// Records added later rank behind those added before. They must outlive the index or be removed.
  void Add(const clsMember& member);
  void Remove(const clsMember& member);
  void Clear();

  /// The first-ranked record whose `EXEName` stands anywhere in the text, in any letter case, and
  /// whose path differs from the excluded one; nothing when there is none.
  [[nodiscard]] std::optional<Entry> FirstIn(std::string_view text,
                                             std::string_view excludedPath) const;

 private:
  using Entries = std::vector<Entry>;

  struct Node {
    std::uint32_t firstChild = 0;
    std::uint32_t nextSibling = 0;
    std::uint32_t entries = 0;  ///< position in entries_; 0 is none
    char letter = 0;
  };

  [[nodiscard]] std::uint32_t Child(std::uint32_t node, char letter) const;
  [[nodiscard]] std::uint32_t ChildMade(std::uint32_t node, char letter);
  [[nodiscard]] Entries& EntriesOf(const std::string& lowered);
  static void Better(const Entries& entries, std::string_view excludedPath, Entry& best);

  std::size_t nextRank_ = 0;
  std::vector<Node> nodes_;
  std::array<std::uint32_t, 256> top_{};
  std::vector<Entries> entries_;
  // Names longer than any file name come from damaged files; kept apart so that no text makes the
  // walk through the trie quadratic.
  std::unordered_map<std::string, Entries> longNames_;
};

}  // namespace gorbex
