#include "check/checks.h"

namespace gorbex {

// Windows does not mind letter case, and neither does this program: another spelling than on disk
// does no harm. Two files, which only other systems can hold, are a trap.
void LookForLetterCase(CheckedGroup& group, Findings& found) {
  for (const CheckedSource& source : group.Sources()) {
    if (source.other.empty()) continue;
    const auto& use = source.uses.front();
    found.push_back(FindingIn(
        use.project->path, source.path,
        source.path + " exists twice; the other file's name is " + source.other, use.line));
  }
}

}  // namespace gorbex
