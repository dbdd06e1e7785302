#include "analysis/group_dependency.h"

#include "core/text.h"
#include "platform/code_page.h"

namespace gorbex {
namespace {

constexpr std::size_t kLongestName = 260;

}  // namespace

GroupDependency::GroupDependency(MemberCollection& members)
    : added_(members.added.Connect([this](const clsMember& member) { Add(member); })),
      removing_(members.removing.Connect([this](const clsMember& member) { Remove(member); })),
      cleared_(members.cleared.Connect([this] { Clear(); })) {
  Clear();
  for (const auto& member : members) Add(*member);
}

void GroupDependency::Clear() {
  nextRank_ = 0;
  nodes_.assign(1, {});
  top_.fill(0);
  entries_.assign(1, {});
  longNames_.clear();
}

std::uint32_t GroupDependency::Child(std::uint32_t node, char letter) const {
  if (node == 0) return top_[static_cast<unsigned char>(letter)];
  std::uint32_t child = nodes_[node].firstChild;
  while (child != 0 && nodes_[child].letter != letter) child = nodes_[child].nextSibling;
  return child;
}

std::uint32_t GroupDependency::ChildMade(std::uint32_t node, char letter) {
  if (const auto child = Child(node, letter); child != 0) return child;
  const auto made = static_cast<std::uint32_t>(nodes_.size());
  nodes_.push_back({0, node == 0 ? 0 : nodes_[node].firstChild, 0, letter});
  if (node == 0) {
    top_[static_cast<unsigned char>(letter)] = made;
  } else {
    nodes_[node].firstChild = made;
  }
  return made;
}

GroupDependency::Entries& GroupDependency::EntriesOf(const std::string& lowered) {
  if (lowered.size() > kLongestName) return longNames_[lowered];
  std::uint32_t node = 0;
  for (const char letter : lowered) node = ChildMade(node, letter);
  if (nodes_[node].entries == 0) {
    nodes_[node].entries = static_cast<std::uint32_t>(entries_.size());
    entries_.emplace_back();
  }
  return entries_[nodes_[node].entries];
}

void GroupDependency::Add(const clsMember& member) {
  const std::size_t rank = nextRank_++;
  if (!member.EXEName.empty()) EntriesOf(LowerCase(member.EXEName)).push_back({rank, &member});
}

void GroupDependency::Remove(const clsMember& member) {
  if (member.EXEName.empty()) return;
  std::erase_if(EntriesOf(LowerCase(member.EXEName)),
                [&](const Entry& entry) { return entry.member == &member; });
}

// Paths are unique, so at most one entry of a name is skipped.
void GroupDependency::Better(const Entries& entries, std::string_view excludedPath, Entry& best) {
  for (const Entry& entry : entries) {
    if (best.member != nullptr && entry.rank > best.rank) return;
    if (entry.member->path == excludedPath) continue;
    best = entry;
    return;
  }
}

const clsMember* GroupDependency::FindProducer(std::string_view componentPath,
                                               std::string_view projectPath) const {
  const std::string lowered = LowerCase(componentPath);
  Entry best;
  for (std::size_t start = 0; start < lowered.size(); ++start) {
    std::uint32_t node = 0;
    for (std::size_t i = start; i < lowered.size(); ++i) {
      node = Child(node, lowered[i]);
      if (node == 0) break;
      if (nodes_[node].entries != 0) Better(entries_[nodes_[node].entries], projectPath, best);
    }
  }
  for (const auto& [name, entries] : longNames_) {
    if (ContainsIgnoringCase(lowered, name)) Better(entries, projectPath, best);
  }
  return best.member;
}

std::string GroupDependency::FindGroupDependency(std::string_view componentPath,
                                                 std::string_view projectPath) const {
  const clsMember* producer = FindProducer(componentPath, projectPath);
  return producer == nullptr ? std::string() : producer->path;
}

}  // namespace gorbex
