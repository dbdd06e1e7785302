#include "check/checks.h"
#include "core/file_tools.h"
#include "core/text.h"

namespace gorbex {

// Only where the run goes on with the present binary: one that is not registered is an error.
void LookForUsedNotQueued(CheckedGroup& group, Findings& found) {
  if (!group.HasQueue()) return;
  std::unordered_map<const CheckedProject*, bool> isUnregistered;
  for (const CheckedReference& reference : group.References()) {
    if (reference.state == CheckedReference::State::Registered) continue;
    for (const auto& use : reference.uses) isUnregistered[use.producer] = true;
  }
  const auto& projects = group.Projects();
  const auto users = group.Graph().Users();
  for (std::size_t used = 0; used < projects.size(); ++used) {
    if (projects[used].row != 0 || isUnregistered.contains(&projects[used])) continue;
    Finding finding{.file = projects[used].path, .subject = projects[used].path};
    for (const std::size_t user : users[used]) {
      if (projects[user].row != 0) finding.projects.push_back(projects[user].path);
    }
    if (finding.projects.empty()) continue;
    finding.text =
        GetFileFromPath(projects[used].path) + " is not in the queue, and " +
        Counted(finding.projects.size(), "queued project uses it: ", "queued projects use it: ") +
        FileNames(finding.projects);
    found.push_back(std::move(finding));
  }
}

}  // namespace gorbex
