#include <map>

#include "check/checks.h"
#include "core/file_tools.h"
#include "platform/code_page.h"

namespace gorbex {
namespace {

// Why the compiler cannot write into a folder; empty when it can, as far as can be seen.
std::string ProblemOf(const FileReader& files, const std::string& folder) {
  const auto info = files.Look(folder);
  if (!info) return " does not exist";
  if (!info->isFolder) return " is not a folder";
  return (info->attributes & file_attribute::kReadOnly) != 0 ? " is not writable" : "";
}

void CheckCommonFolder(const CheckedGroup& group, Findings& found) {
  const std::string& folder = group.Parts().window.buildDirectory;
  const auto add = [&](const std::string& text) {
    found.push_back({.file = group.File(), .subject = folder, .text = text});
  };
  const std::string problem = ProblemOf(group.Parts().files, folder);
  if (!problem.empty()) add("the build folder " + folder + problem);
  if (problem.empty() && group.Parts().options.ChangeRefs && !folder.ends_with('\\')) {
    add("the build folder " + folder +
        " does not end with \"\\\", so that the update of references finds no built component");
  }
}

void CheckOwnFolders(const CheckedGroup& group, Findings& found) {
  struct Folder {
    std::string path;
    Finding finding;
  };
  std::map<std::string, Folder> folders;
  for (const CheckedProject& project : group.Projects()) {
    if (!project.isBuilt) continue;
    std::string path = StripPath(project.output);
    Folder& folder = folders[LowerCase(path)];
    Finding& finding = folder.finding;
    if (finding.projects.empty()) {
      folder.path = std::move(path);
      finding.file = project.path;
      if (const ProjectLine* line = project.Line("Path32")) finding.line = line->number;
    }
    finding.projects.push_back(project.path);
  }
  for (auto& each : folders) {
    const Folder& folder = each.second;
    const std::string problem = ProblemOf(group.Parts().files, folder.path + "\\");
    if (problem.empty()) continue;
    Finding& finding = each.second.finding;
    finding.subject = folder.path;
    finding.text = "the output folder " + folder.path + problem;
    finding.TellNumber("build into it");
    found.push_back(std::move(finding));
  }
}

}  // namespace

void LookForBuildFolder(CheckedGroup& group, Findings& found) {
  if (group.Parts().window.buildDirectory.empty()) {
    CheckOwnFolders(group, found);
  } else {
    CheckCommonFolder(group, found);
  }
}

}  // namespace gorbex
