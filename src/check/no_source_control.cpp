#include "check/checks.h"

namespace gorbex {

void LookForNoSourceControl(CheckedGroup& group, Findings& found) {
  if (!group.Parts().options.GetLatest) return;
  Finding finding;
  for (const CheckedProject& project : group.Projects()) {
    if (project.isBuilt && project.record->VSSProject.empty()) {
      finding.projects.push_back(project.path);
    }
  }
  if (finding.projects.empty()) return;
  finding.file = finding.projects.front();
  finding.subject = "source control";
  finding.text = finding.projects.size() == 1
                     ? std::string(
                           "the project is not under source control, and the run is to get "
                           "its latest sources")
                     : std::to_string(finding.projects.size()) +
                           " projects are not under source control, and the run is to get their "
                           "latest sources";
  found.push_back(std::move(finding));
}

}  // namespace gorbex
