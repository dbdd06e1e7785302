#include "check/checks.h"

namespace gorbex {
namespace {

// The values that the run writes into project files without taking the attribute away first.
std::string Written(const CheckedGroup::Uses& uses) {
  if (!uses.options.VersionComponents.empty()) return "the version";
  if (uses.options.DebugBuild == "True") return "debug values";
  return uses.options.Compatible ? "" : "the compatibility";
}

bool IsReadOnly(const FileReader& files, const std::string& path) {
  const auto info = files.Look(path);
  return info && (info->attributes & file_attribute::kReadOnly) != 0;
}

}  // namespace

void LookForProjectReadOnly(CheckedGroup& group, Findings& found) {
  const std::string written = Written(group.Parts());
  if (written.empty()) return;
  Finding finding;
  for (const CheckedProject& project : group.Projects()) {
    const bool isMeant = project.isBuilt && IsReadOnly(group.Parts().files, project.path);
    if (isMeant) finding.projects.push_back(project.path);
  }
  if (finding.projects.empty()) return;
  const auto count = finding.projects.size();
  finding.file = finding.projects.front();
  finding.subject = written;
  finding.text = (count == 1 ? std::string("the project file is")
                             : std::to_string(count) + " project files are") +
                 " read-only, and the run is to write " + written + " into " +
                 (count == 1 ? "it" : "them");
  found.push_back(std::move(finding));
}

}  // namespace gorbex
