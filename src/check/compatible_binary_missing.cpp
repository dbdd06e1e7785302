#include "check/by_folder.h"
#include "check/checks.h"
#include "platform/code_page.h"
#include "platform/windows_path.h"

namespace gorbex {
namespace {

// Why the compiler cannot keep compatibility with a file that is there; empty when it can.
std::string CompatibilityProblem(const CheckedGroup::Uses& uses, const std::string& file) {
  try {
    const std::string bytes = uses.files.Read(file);
    return uses.components.LibraryIn(bytes) ? "" : " has no interface that can be read";
  } catch (const RuntimeError& error) {
    return " cannot be read: " + error.Description();
  }
}

}  // namespace

// A project that keeps compatibility with what it builds itself has nothing to keep at first.
void LookForCompatibleBinaryMissing(CheckedGroup& group, Findings& found) {
  if (!group.Parts().options.Compatible) return;  // the run breaks compatibility
  ByFolder missing("compatible binaries do not exist");
  ByFolder unusable("compatible binaries cannot be used");
  for (const CheckedProject& project : group.Projects()) {
    if (!project.isBuilt || !project.IsComponent() || !project.record->BinaryCompat) continue;
    const ProjectLine* line = project.Line("CompatibleEXE32");
    Finding finding{.file = project.path, .projects = {project.path}};
    if (line == nullptr || line->value.empty()) {
      finding.text = "the project names no binary to be compatible with";
      found.push_back(std::move(finding));
      continue;
    }
    finding.line = line->number;
    finding.subject = ResolvedPath(project.folder, line->value);
    finding.text = "the compatible binary " + finding.subject;
    if (group.Disk().Find(finding.subject) == nullptr) {
      if (EqualsIgnoringCase(finding.subject, project.output)) continue;
      finding.text += " does not exist";
      missing.Add(std::move(finding));
      continue;
    }
    const std::string problem = CompatibilityProblem(group.Parts(), finding.subject);
    if (problem.empty()) continue;
    finding.text += problem;
    unusable.Add(std::move(finding));
  }
  missing.MoveTo(found);
  unusable.MoveTo(found);
}

}  // namespace gorbex
