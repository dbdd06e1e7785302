#include "check/checks.h"
#include "core/file_tools.h"
#include "core/text.h"

namespace gorbex {

// No order suits the projects of a circle, which is a finding by itself.
void LookForQueueOrder(CheckedGroup& group, Findings& found) {
  if (!group.HasQueue()) return;
  const auto& projects = group.Projects();
  const DependencyGraph& graph = group.Graph();
  std::vector<std::size_t> circleOf(projects.size(), 0);
  std::size_t circles = 0;
  for (const auto& circle : graph.Cycles()) {
    ++circles;
    for (const std::size_t number : circle) circleOf[number] = circles;
  }
  const auto users = graph.Users();
  for (std::size_t used = 0; used < projects.size(); ++used) {
    if (!projects[used].isBuilt) continue;
    Finding finding{.file = projects[used].path, .subject = projects[used].path};
    for (const std::size_t user : users[used]) {
      const bool isInCircle = circleOf[used] != 0 && circleOf[user] == circleOf[used];
      const bool isEarly = projects[user].isBuilt && projects[user].row < projects[used].row;
      if (isEarly && !isInCircle) finding.projects.push_back(projects[user].path);
    }
    if (finding.projects.empty()) continue;
    finding.text =
        GetFileFromPath(projects[used].path) + " is queued after " +
        Counted(finding.projects.size(), "project that uses it: ", "projects that use it: ") +
        FileNames(finding.projects);
    found.push_back(std::move(finding));
  }
}

}  // namespace gorbex
