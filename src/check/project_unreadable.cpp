#include "check/checks.h"

namespace gorbex {

void LookForProjectUnreadable(CheckedGroup& group, Findings& found) {
  for (const auto& [path, reason, hasImpossibleName] : group.UnreadProjects()) {
    if (hasImpossibleName) continue;
    found.push_back({.file = path,
                     .subject = path,
                     .projects = {path},
                     .text = "the project cannot be read: " + reason});
  }
}

}  // namespace gorbex
