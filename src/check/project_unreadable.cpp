#include "check/checks.h"

namespace gorbex {

void LookForProjectUnreadable(CheckedGroup& group, Findings& found) {
  for (const auto& [path, reason, hasImpossibleName] : group.UnreadProjects()) {
    if (hasImpossibleName) continue;
    found.push_back(FindingIn(path, path, "the project cannot be read: " + reason));
  }
}

}  // namespace gorbex
