#include "core/main_window.h"

#include "core/node_key.h"

namespace gorbex {

std::vector<TreeNode*> frmBuilder::ProjectNodes() const {
  const TreeNode* root = tvwProjects.Find(kRootKey);
  return root == nullptr ? std::vector<TreeNode*>() : root->Children();
}

void frmBuilder::ClearDetails() {
  lvwData.Clear();
  lvwData.SetTag("");
  for (auto* label : {&lblCompatability, &lblFilename, &lblProjectName, &lblVersion, &lblBinary}) {
    label->Set("");
  }
}

void frmBuilder::ClearBuildProject() {
  tvwProjects.Clear();
  lvwQueue.Clear();
  ClearDetails();
  ProjectMembers.Clear();
  tvwProjects.Add(nullptr, std::string(kRootKey), "GorbexBuilder Projects", Image::VbGroup)
      .SetExpanded(true);
}

}  // namespace gorbex
