#include "core/group_file.h"

#include <algorithm>
#include <unordered_set>
#include <utility>

#include "core/file_tools.h"
#include "core/text.h"
#include "platform/code_page.h"
#include "platform/runtime_error.h"
#include "platform/windows_path.h"

namespace gorbex {
namespace {

bool IsProjectLine(std::string_view key) {
  return EqualsIgnoringCase(key, "Project") || EqualsIgnoringCase(key, "StartupProject");
}

std::vector<FolderEntry> ListOrNothing(const FileReader& files, const std::string& folder) {
  try {
    return files.List(folder);
  } catch (const RuntimeError&) {
    return {};
  }
}

bool IsProject(const FolderEntry& entry) {
  return !entry.isFolder && LowerCase(entry.name).ends_with(".vbp");
}

void Collect(const std::string& folder, const std::vector<FolderEntry>& entries,
             FoundProjects& found, std::vector<std::string>& folders) {
  for (const FolderEntry& entry : entries) {
    const bool isOwnFolder = entry.isFolder && !entry.isLink;
    if (!isOwnFolder && !IsProject(entry)) continue;
    auto& place = !entry.isReachable ? found.unreachable : isOwnFolder ? folders : found.projects;
    place.push_back(JoinPath(folder, entry.name));
  }
}

void SortIgnoringCase(std::vector<std::string>& paths) {
  std::ranges::sort(paths, {}, [](const std::string& path) { return LowerCase(path); });
}

}  // namespace

std::vector<std::string> ProjectsInGroup(const std::string& groupPath, std::string_view text) {
  const std::string folder = StripPath(groupPath);
  std::vector<std::string> projects;
  std::unordered_set<std::string> known;
  for (auto line : Split(text, '\n')) {
    if (line.ends_with('\r')) line.remove_suffix(1);
    const auto equals = line.find('=');
    if (equals == std::string_view::npos || !IsProjectLine(line.substr(0, equals))) continue;
    const std::string path = WithoutQuotes(TrimBlanks(line.substr(equals + 1)));
    if (path.empty()) continue;
    std::string resolved = ResolvedPath(folder, path);
    if (GetFileFromPath(resolved).empty()) continue;
    if (known.insert(LowerCase(resolved)).second) projects.push_back(std::move(resolved));
  }
  return projects;
}

FoundProjects ProjectsInFolder(const FileReader& files, const std::string& folder) {
  FoundProjects found;
  std::vector<std::string> folders;
  Collect(folder, files.List(folder), found, folders);
  while (!folders.empty()) {
    const std::string next = std::move(folders.back());
    folders.pop_back();
    Collect(next, ListOrNothing(files, next), found, folders);
  }
  SortIgnoringCase(found.projects);
  SortIgnoringCase(found.unreachable);
  return found;
}

std::string WithCrLf(std::string_view text) {
  std::string result;
  result.reserve(text.size() + text.size() / 16);
  char before = '\0';
  for (const char letter : text) {
    if (letter == '\n' && before != '\r') result += '\r';
    result += letter;
    before = letter;
  }
  return result;
}

}  // namespace gorbex
