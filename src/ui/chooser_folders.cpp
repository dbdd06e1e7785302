#include "ui/chooser_folders.h"

namespace gorbex::ui {

std::string ChooserFolders::Begin(const std::string& chooser, const std::string& project) {
  if (!project.empty() && project != project_) {
    project_ = project;
    folders_.clear();
  }
  const auto found = folders_.find(chooser);
  if (found != folders_.end()) return found->second;
  return project.empty() ? last_ : project;
}

void ChooserFolders::Remember(const std::string& chooser, const std::string& folder) {
  folders_[chooser] = folder;
  last_ = folder;
}

}  // namespace gorbex::ui
