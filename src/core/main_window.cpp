#include "core/main_window.h"

namespace gorbex {

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
