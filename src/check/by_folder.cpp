#include "check/by_folder.h"

#include <algorithm>

#include "check/wording.h"

namespace gorbex {

Finding ByFolder::Joined(std::vector<Entry>& entries) const {
  Finding joined = std::move(entries.front().finding);
  std::vector<std::string> files;
  for (Entry& entry : entries) {
    files.push_back(entry.file);
    for (const std::string& project : entry.finding.projects) joined.Concern(project);
  }
  auto& projects = joined.projects;
  std::sort(projects.begin(), projects.end());
  projects.erase(std::unique(projects.begin(), projects.end()), projects.end());
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
    for (Entry& entry : entries) found.push_back(std::move(entry.finding));
  }
}

}  // namespace gorbex
