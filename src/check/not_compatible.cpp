#include "check/checks.h"
#include "core/file_tools.h"
#include "core/text.h"

namespace gorbex {

void LookForNotCompatible(CheckedGroup& group, Findings& found) {
  const clsOptions& options = group.Parts().options;
  // References follow new identities, or the user wants them broken.
  if (options.ChangeRefs || !options.Compatible) return;
  const auto& projects = group.Projects();
  const auto users = group.Graph().Users();
  for (std::size_t number = 0; number < projects.size(); ++number) {
    const CheckedProject& project = projects[number];
    if (!project.isBuilt || !project.IsComponent() || project.record->BinaryCompat) continue;
    const ProjectLine* line = project.Line("CompatibleMode");
    // Project compatibility keeps the library's identity: users that are built as well go on
    // working.
    const bool keepsLibrary = line != nullptr && line->value == "1";
    Finding finding{.file = project.path, .subject = project.path};
    if (line != nullptr) finding.line = line->number;
    for (const std::size_t user : users[number]) {
      const bool suffers = !keepsLibrary || !projects[user].isBuilt;
      if (suffers) finding.projects.push_back(projects[user].path);
    }
    if (finding.projects.empty()) continue;
    finding.text = "the project gets new identities with each build, and " +
                   Counted(finding.projects.size(), "project uses it: ", "projects use it: ") +
                   FileNames(finding.projects);
    found.push_back(std::move(finding));
  }
}

}  // namespace gorbex
