#pragma once

#include <array>
#include <cstddef>
#include <cstdint>
#include <string>
#include <string_view>
#include <unordered_map>
#include <vector>

#include "core/member.h"
#include "core/signal.h"

namespace gorbex {

/// Answers which project of the build produces a component, by the names of all built binaries at
/// once: a trie over the lower-cased `EXEName`s. The cost of an answer depends on the length of the
/// path, not on the number of projects. Follows the changes of the collection, which must outlive
/// it.
class GroupDependency {
 public:
  explicit GroupDependency(MemberCollection& members);

  /// The first project, other than the one of the given path (exact comparison), whose `EXEName`
  /// occurs in the component path in any letter case; null when there is none. A substring
  /// suffices.
  [[nodiscard]] const clsMember* FindProducer(std::string_view componentPath,
                                              std::string_view projectPath) const;

  /// The path of that project; empty when there is none.
  [[nodiscard]] std::string FindGroupDependency(std::string_view componentPath,
                                                std::string_view projectPath) const;

 private:
  /// A record that was added later ranks after those added before.
  struct Entry {
    std::size_t rank = 0;
    const clsMember* member = nullptr;
  };
  using Entries = std::vector<Entry>;

  struct Node {
    std::uint32_t firstChild = 0;
    std::uint32_t nextSibling = 0;
    std::uint32_t entries = 0;  ///< position in entries_; 0 is none
    char letter = 0;
  };

  void Add(const clsMember& member);
  void Remove(const clsMember& member);
  void Clear();
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

  Subscription added_;
  Subscription removing_;
  Subscription cleared_;
};

}  // namespace gorbex
