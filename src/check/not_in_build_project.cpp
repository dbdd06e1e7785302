#include <map>
#include <unordered_set>

#include "check/checks.h"
#include "core/build_project_file.h"
#include "core/file_tools.h"
#include "platform/code_page.h"
#include "platform/file_system.h"

namespace gorbex {
namespace {

bool HasExtension(const std::string& name, std::string_view extension) {
  return name.size() > extension.size() &&
         EqualsIgnoringCase(std::string_view(name).substr(name.size() - extension.size()),
                            extension);
}

/// The project files beside those of the group, and what other build projects name.
class Neighbours {
 public:
  Neighbours(const FileReader& files, DiskNames& disk) : files_(files), disk_(disk) {}

  void AddFolder(const std::string& folder) {
    if (!folders_.insert(LowerCase(folder)).second) return;
    for (const auto& [name, entry] : disk_.In(folder)) {
      if (entry.isFolder || entry.name.empty()) continue;
      std::string path = JoinPath(folder, entry.name);
      if (HasExtension(entry.name, ".vbp")) {
        projects_.emplace(LowerCase(path), path);
      } else if (HasExtension(entry.name, ".bpf")) {
        for (const std::string& named : ProjectsNamedIn(files_, path)) Forget(named);
      }
    }
  }

  void Forget(const std::string& path) { named_.insert(LowerCase(path)); }

  [[nodiscard]] std::vector<std::string> Left() const {
    std::vector<std::string> left;
    for (const auto& [key, path] : projects_) {
      if (!named_.contains(key)) left.push_back(path);
    }
    return left;
  }

 private:
  const FileReader& files_;
  DiskNames& disk_;
  std::unordered_set<std::string> folders_;
  std::map<std::string, std::string> projects_;
  std::unordered_set<std::string> named_;
};

}  // namespace

// Only folders that hold a project of the group, and the build project's: others belong to others.
void LookForNotInBuildProject(CheckedGroup& group, Findings& found) {
  const std::string& file = group.Parts().window.fileName;
  if (file.empty()) return;
  Neighbours neighbours(group.Parts().files, group.Disk());
  neighbours.AddFolder(StripPath(file));
  for (const CheckedProject& project : group.Projects()) {
    neighbours.AddFolder(project.folder);
    neighbours.Forget(project.path);
  }
  for (const auto& unread : group.UnreadProjects()) neighbours.Forget(unread.path);
  for (const std::string& path : neighbours.Left()) {
    found.push_back(FindingIn(path, path, "no build project of the folder names this project"));
  }
}

}  // namespace gorbex
