#include "check/by_folder.h"

#include <algorithm>

namespace gorbex {

Finding ByFolder::Joined(Findings& entries) const {
  Finding joined = entries.front();
  std::vector<std::string> files;
  for (const Finding& entry : entries) {
    files.push_back(entry.subject);
    for (const std::string& project : entry.projects) joined.Concern(project);
  }
  auto& projects = joined.projects;
  std::ranges::sort(projects);
  projects.erase(std::ranges::unique(projects).begin(), projects.end());
  joined.subject = StripPath(files.front());
  joined.text = std::to_string(files.size()) + " " + manyText_ + " in " + joined.subject + ": " +
                FileNames(files);
  return joined;
}

void ByFolder::MoveTo(Findings& found) {
  constexpr std::size_t kMostAlone = 5;
  for (auto& [folder, entries] : folders_) {
    if (entries.size() > kMostAlone) {
      found.push_back(Joined(entries));
      continue;
    }
    for (Finding& entry : entries) found.push_back(std::move(entry));
  }
}

}  // namespace gorbex
