#include <algorithm>

#include "check/checks.h"
#include "core/file_tools.h"

namespace gorbex {

// Many products share modules. That does harm where the run writes new identities into a source of
// which another project, which is not built, still expects the old ones.
void LookForSharedMember(CheckedGroup& group, Findings& found) {
  if (!group.Parts().options.ChangeRefs) return;
  for (const CheckedSource& source : group.Sources()) {
    const auto& uses = source.uses;
    const auto isBuilt = [](const CheckedSource::Use& use) { return use.project->isBuilt; };
    const auto built = std::ranges::find_if(uses, isBuilt);
    const auto left = std::ranges::find_if_not(uses, isBuilt);
    if (built == uses.end() || left == uses.end()) continue;
    Finding& finding = found.emplace_back();
    finding.file = left->project->path;
    finding.line = left->line;
    finding.subject = source.path;
    for (const auto& use : uses) finding.projects.push_back(use.project->path);
    finding.text = GetFileFromPath(source.path) + " is also a part of " +
                   GetFileFromPath(built->project->path) +
                   ", whose update of references changes it; the run does not build " +
                   GetFileFromPath(left->project->path);
  }
}

}  // namespace gorbex
