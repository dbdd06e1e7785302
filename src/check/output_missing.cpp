#include "check/checks.h"
#include "core/file_tools.h"
#include "core/text.h"
#include "platform/code_page.h"

namespace gorbex {
namespace {

// The projects that reference a component of this name.
std::vector<std::string> UsersOf(CheckedGroup& group, const std::string& name) {
  std::vector<std::string> users;
  for (const CheckedReference& reference : group.References()) {
    for (const auto& use : reference.uses) {
      const bool isMeant =
          use.producer == nullptr && EqualsIgnoringCase(GetFileFromPath(use.file), name);
      if (isMeant) users.push_back(use.project->path);
    }
  }
  return users;
}

}  // namespace

// The compiler derives a missing file name from the project's. That is well unless others use the
// component: nothing then tells which project it is of.
void LookForOutputMissing(CheckedGroup& group, Findings& found) {
  for (const CheckedProject& project : group.Projects()) {
    if (project.record->Name.empty()) {
      found.push_back(FindingIn(project.path, project.path, "the project has no name"));
    } else if (project.record->EXEName.empty() && project.IsComponent()) {
      const std::string name = GetFileFromPath(project.output);
      const auto users = UsersOf(group, name);
      if (users.empty()) continue;
      found.push_back(FindingIn(project.path, name,
                                "the project does not name its output file; " +
                                    Counted(users.size(), "project uses ", "projects use ") +
                                    name));
    }
  }
}

}  // namespace gorbex
