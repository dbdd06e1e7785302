#include "analysis/group_dependency.h"

namespace gorbex {

GroupDependency::GroupDependency(MemberCollection& members)
    : added_(members.added.Connect([this](const clsMember& member) { index_.Add(member); })),
      removing_(
          members.removing.Connect([this](const clsMember& member) { index_.Remove(member); })),
      cleared_(members.cleared.Connect([this] { index_.Clear(); })) {
  for (const auto& member : members) index_.Add(*member);
}

std::string GroupDependency::FindGroupDependency(std::string_view componentPath,
                                                 std::string_view projectPath) const {
  const auto found = index_.FirstIn(componentPath, projectPath);
  return found ? found->member->path : std::string();
}

}  // namespace gorbex
