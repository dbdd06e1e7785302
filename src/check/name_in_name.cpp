#include <map>
#include <utility>

#include "check/checks.h"
#include "core/file_tools.h"
#include "platform/code_page.h"

namespace gorbex {

// A component is recognised by a binary's name that is a part of its path. Names that contain one
// another do no harm until a reference is mistaken.
void LookForNameInName(CheckedGroup& group, Findings& found) {
  std::map<std::pair<const CheckedProject*, std::string>, Finding> mistaken;
  for (const CheckedReference& reference : group.References()) {
    for (const auto& use : reference.uses) {
      if (use.producer == nullptr) continue;
      const std::string name = GetFileFromPath(use.file);
      if (EqualsIgnoringCase(name, use.producer->record->EXEName)) continue;
      Finding& finding = mistaken[{use.producer, LowerCase(name)}];
      if (finding.projects.empty()) {
        finding.file = use.project->path;
        finding.line = use.line;
        finding.subject = name;
        finding.text = name + " is taken for " + use.producer->record->EXEName + " of " +
                       GetFileFromPath(use.producer->path);
      }
      finding.Concern(use.project->path);
    }
  }
  for (auto& [key, finding] : mistaken) {
    finding.TellNumber("use it");
    found.push_back(std::move(finding));
  }
}

}  // namespace gorbex
