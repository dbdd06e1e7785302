#include <algorithm>

#include "check/checks.h"
#include "core/project_file.h"
#include "core/text.h"

namespace gorbex {
namespace {

// One cause for all, such as the way that git checks files out.
void CheckProjectFiles(const CheckedGroup& group, Findings& found) {
  Finding finding;
  std::string problem;
  for (const CheckedProject& project : group.Projects()) {
    const auto each = LineEndProblem(project.text);
    if (!each) continue;
    if (finding.projects.empty()) {
      finding.file = project.path;
      problem = *each;
    }
    finding.projects.push_back(project.path);
  }
  if (finding.projects.empty()) return;
  finding.subject = "project files";
  finding.text = finding.projects.size() == 1
                     ? problem + "; the compiler wants CR LF"
                     : std::to_string(finding.projects.size()) +
                           " project files have lines that end with LF or CR only; the compiler "
                           "wants CR LF";
  found.push_back(std::move(finding));
}

void CheckSources(CheckedGroup& group, Findings& found) {
  Finding finding;
  std::vector<std::string> paths;
  std::string problem;
  for (const CheckedSource& source : group.Sources()) {
    if (source.lineEnds.empty()) continue;
    if (paths.empty()) problem = source.lineEnds;
    paths.push_back(source.path);
    for (const auto& use : source.uses) finding.Concern(use.project->path);
  }
  if (paths.empty()) return;
  std::ranges::sort(finding.projects);
  finding.projects.erase(std::ranges::unique(finding.projects).begin(), finding.projects.end());
  finding.file = paths.front();
  finding.subject = "sources";
  finding.text = paths.size() == 1 ? problem + "; the compiler wants CR LF"
                                   : std::to_string(paths.size()) + " sources of " +
                                         Counted(finding.projects.size(), "project", "projects") +
                                         " have lines that end with LF or CR only; the compiler "
                                         "wants CR LF";
  found.push_back(std::move(finding));
}

}  // namespace

void LookForLineEnds(CheckedGroup& group, Findings& found) {
  CheckProjectFiles(group, found);
  CheckSources(group, found);
}

}  // namespace gorbex
