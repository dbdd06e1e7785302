#include "check/checks.h"

namespace gorbex {

// Windows does not mind letter case, and neither does this program: another spelling than on disk
// does no harm. Two files, which only other systems can hold, are a trap.
void LookForLetterCase(CheckedGroup& group, Findings& found) {
  for (const CheckedSource& source : group.Sources()) {
    if (source.other.empty()) continue;
    const auto& use = source.uses.front();
    found.push_back(
        {.file = use.project->path,
         .line = use.line,
         .subject = source.path,
         .projects = {use.project->path},
         .text = source.path + " exists twice; the other file's name is " + source.other});
  }
}

}  // namespace gorbex
