#include <map>

#include "check/checks.h"
#include "core/file_tools.h"
#include "platform/code_page.h"

namespace gorbex {

void LookForSameOutput(CheckedGroup& group, Findings& found) {
  std::map<std::string, std::vector<const CheckedProject*>> byOutput;
  for (const CheckedProject& project : group.Projects()) {
    if (project.isBuilt) byOutput[LowerCase(project.output)].push_back(&project);
  }
  for (const auto& [key, projects] : byOutput) {
    if (projects.size() < 2) continue;
    Finding& finding = found.emplace_back();
    const CheckedProject& first = *projects.front();
    finding.file = first.path;
    if (const ProjectLine* line = first.Line("ExeName32")) finding.line = line->number;
    finding.subject = first.output;
    for (const CheckedProject* project : projects) finding.projects.push_back(project->path);
    finding.text = std::to_string(projects.size()) + " projects write " + first.output + ": " +
                   FileNames(finding.projects);
  }
}

}  // namespace gorbex
