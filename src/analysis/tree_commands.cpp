#include "analysis/tree_commands.h"

#include "core/procedure.h"

namespace gorbex {

void TreeCommands::mnuTreePopupAddProject_Click() {
  Procedure::IgnoringErrors().Run([&](Procedure& on) {
    const auto paths = on([&] {
      return dialogs_.OpenFiles(
          {"Select a VB Project to add to the list", "VB Project Files (*.vbp)|*.vbp", "*.vbp"});
    });
    if (paths.empty()) return;
    // The findings tell which files cannot be read, or are gone meanwhile.
    for (const std::string& path : paths) on([&] { reader_.ReadProject(path); });
    on([&] { window_.SetStatus("Re-Checking references"); });
    on([&] { views_.mnuToolsDependancies_Click(); });
    on([&] { window_.SetStatus("Project Loaded"); });
    on([&] { findings_.Tell(); });
    window_.ProjectChanged = true;
  });
}

void TreeCommands::mnuTreePopupRemoveProject_Click() {
  const TreeNode* node = window_.tvwProjects.Selected();
  if (node == nullptr) return;
  Procedure::IgnoringErrors().Run([&](Procedure& on) {
    on([&] { window_.ProjectMembers.Remove(node->Text()); });
    if (window_.lvwData.Tag() == node->Text()) on([&] { window_.ClearDetails(); });
    on([&] { window_.tvwProjects.Remove(node->Key()); });
    on([&] { views_.mnuToolsDependancies_Click(); });
    window_.ProjectChanged = true;
  });
}

}  // namespace gorbex
