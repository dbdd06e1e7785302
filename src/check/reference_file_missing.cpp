#include <map>
#include <optional>

#include "check/checks.h"
#include "core/reference_value.h"
#include "platform/code_page.h"
#include "platform/windows_path.h"

namespace gorbex {
namespace {

// "*\A..\Core\Core.vbp" names a project instead of a component.
void CheckProjectReferences(CheckedGroup& group, Findings& found) {
  std::map<std::string, Finding> missing;
  for (const CheckedProject& project : group.Projects()) {
    for (const ProjectLine& line : project.lines) {
      const auto file = line.IsReference() ? ProjectFileOf(line.value) : std::nullopt;
      if (!file) continue;
      const std::string path = ResolvedPath(project.folder, *file);
      if (group.Disk().Find(path) != nullptr) continue;
      Finding& finding = missing[LowerCase(path)];
      if (finding.projects.empty()) {
        finding.file = project.path;
        finding.line = line.number;
        finding.subject = path;
        finding.text = "the referenced project " + path + " does not exist";
      }
      finding.projects.push_back(project.path);
    }
  }
  for (auto& [path, finding] : missing) found.push_back(std::move(finding));
}

}  // namespace

void LookForReferenceFileMissing(CheckedGroup& group, Findings& found) {
  for (const CheckedReference& reference : group.References()) {
    const auto uses = reference.UsesNotBuilt();
    if (reference.state != CheckedReference::State::FileMissing || uses.empty()) continue;
    found.push_back(reference.FindingOn(uses, reference.name + " is registered as " +
                                                  reference.registered + ", which does not exist"));
  }
  CheckProjectReferences(group, found);
}

}  // namespace gorbex
