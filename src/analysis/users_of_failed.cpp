#include "analysis/users_of_failed.h"

#include "analysis/dependency_graph.h"

namespace gorbex {

UsersOfFailed::UsersOfFailed(const MemberCollection& members, const GroupDependency& group)
    : users_(DependencyGraph(members, group).Users()), failedUse_(members.Count(), kNone) {
  for (const auto& member : members) {
    numbers_.emplace(member->path, paths_.size());
    paths_.push_back(member->path);
  }
}

void UsersOfFailed::Add(const std::string& failed) {
  const auto found = numbers_.find(failed);
  if (found == numbers_.end()) return;
  std::vector<std::size_t> open = {found->second};
  while (!open.empty()) {
    const std::size_t project = open.back();
    open.pop_back();
    for (const std::size_t user : users_[project]) {
      if (failedUse_[user] != kNone) continue;
      failedUse_[user] = found->second;
      open.push_back(user);
    }
  }
}

std::string UsersOfFailed::FailedUseOf(const std::string& path) const {
  const auto found = numbers_.find(path);
  if (found == numbers_.end() || failedUse_[found->second] == kNone) return {};
  return paths_[failedUse_[found->second]];
}

}  // namespace gorbex
