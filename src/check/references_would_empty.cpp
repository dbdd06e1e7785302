#include <map>
#include <unordered_set>

#include "check/checks.h"
#include "core/reference_value.h"

namespace gorbex {
namespace {

/// The projects above a project in which an update of its references finds no identity.
std::unordered_set<std::string> CandidatesOf(const CheckedGroup& group,
                                             const CheckedProject& project, bool isBuiltThere) {
  std::unordered_set<std::string> candidates;
  for (const ProjectLine& line : project.lines) {
    if (line.kind != ProjectLine::Kind::Reference || GetGUID(line.value).empty()) continue;
    const CheckedProject* producer = group.ProducerOf(line.value, project.path);
    if (producer == nullptr || producer->row == 0 || producer->row >= project.row) continue;
    if (!producer->isBuilt || !isBuiltThere) candidates.insert(producer->path);
  }
  return candidates;
}

}  // namespace

void LookForReferencesWouldEmpty(CheckedGroup& group, Findings& found) {
  const CheckedGroup::Uses& uses = group.Parts();
  if (!uses.options.ChangeRefs || !group.HasQueue()) return;
  const std::string& folder = uses.window.buildDirectory;
  const bool isBuiltThere = folder.ends_with('\\');
  if (!folder.empty() && !isBuiltThere) return;  // that is a finding on the folder
  std::map<std::string, Finding> lost;
  for (const CheckedProject& project : group.Projects()) {
    if (!project.isBuilt) continue;
    const auto candidates = CandidatesOf(group, project, isBuiltThere);
    if (candidates.empty()) continue;
    const auto isComing = [&](const std::string& path) { return !candidates.contains(path); };
    for (const auto& file : uses.references.ComponentsWithoutIdentity(project.path, isComing)) {
      Finding& finding = lost[file];
      if (finding.projects.empty()) finding.file = project.path;
      finding.projects.push_back(project.path);
    }
  }
  for (auto& [file, finding] : lost) {
    finding.subject = file;
    finding.text = "an update of references would empty the identity of " + file +
                   ", because no component with an identity is found there";
    finding.TellNumber("use it");
    found.push_back(std::move(finding));
  }
}

}  // namespace gorbex
