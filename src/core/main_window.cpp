#include "core/main_window.h"

namespace gorbex {

void frmBuilder::ClearBuildProject() {
  tvwProjects.Clear();
  lvwQueue.Clear();
  lvwData.Clear();
  lvwData.SetTag("");
  ProjectMembers.Clear();
  tvwProjects.Add(nullptr, std::string(kRootKey), "GorbexBuilder Projects", Image::VbGroup);
}

}  // namespace gorbex
