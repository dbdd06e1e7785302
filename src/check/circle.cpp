#include "check/checks.h"
#include "core/file_tools.h"
#include "core/text.h"

namespace gorbex {

void LookForCircle(CheckedGroup& group, Findings& found) {
  for (const auto& circle : group.Graph().Cycles()) {
    Finding& finding = found.emplace_back();
    for (const std::size_t number : circle) {
      finding.projects.push_back(group.Projects()[number].path);
    }
    finding.file = finding.projects.front();
    finding.subject = finding.file;
    finding.text = Counted(circle.size(), "project", "projects");
    finding.text += " use one another in a circle: " + FileNames(finding.projects);
  }
}

}  // namespace gorbex
