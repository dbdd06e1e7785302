#include "build/immediate_build.h"

#include "build/build_settings.h"
#include "core/list_columns.h"

namespace gorbex {

void ImmediateBuild::mnuTreePopupBuildNowDefault_Click() {
  Procedure(uses_.report, ": frmBuilder.mnuTreePopupBuildNowDefault_Click").Run([&](Procedure& on) {
    const auto turn = uses_.compile.BeginBuild();
    if (turn == nullptr) return;
    on([&] { uses_.compile.AskForCompiler(); });
    BuildSelectedNode(on, "");
  });
}

void ImmediateBuild::mnuTreePopupBuildNowNewLocation_Click() {
  Procedure(uses_.report, ": frmBuilder.mnuTreePopupBuildNowNewLocation_Click")
      .Run([&](Procedure& on) {
        const auto turn = uses_.compile.BeginBuild();
        if (turn == nullptr) return;
        on([&] { uses_.compile.AskForCompiler(); });
        const auto folder = on([&] { return AskForDestination(uses_.dialogs); });
        if (folder) {
          BuildSelectedNode(on, *folder);
        } else {
          on([&] { uses_.window.SetStatus("Build Cancelled"); });
        }
      });
}

void ImmediateBuild::BuildSelectedNode(Procedure& on, const std::string& outDir) {
  frmBuilder& window = uses_.window;
  const std::string path = on([&] { return SelectedNodePath(); });
  if (window.compilerPath.empty()) return;
  on([&] { uses_.script.Begin(); });
  on([&] { window.SetStatus("Building " + path); });
  const std::string exeName = on([&] { return window.ProjectMembers.Item(path).EXEName; });
  // The user may choose another build directory while the compile waits.
  const std::string folder = outDir.empty() ? window.buildDirectory : outDir;
  if (on([&] { return uses_.compile.CompileProject(path, outDir); })) {
    on([&] { uses_.script.AddComponent(folder, exeName); });
    on([&] { uses_.script.End(); });
    on([&] { window.menu.mnuFileGenScript.enabled.Set(true); });
    on([&] { uses_.dialogs.Show({"Built " + exeName + " successfully."}); });
  } else {
    on([&] { window.txtLogFile.visible.Set(true); });
    on([&] { uses_.dialogs.Show({"Errors during the build process"}); });
  }
}

void ImmediateBuild::mnuQueueBuild_Click() {
  Procedure(uses_.report, ": frmBuilder.mnuQueueBuild_Click").Run([&](Procedure& on) {
    const auto turn = uses_.compile.BeginBuild();
    if (turn == nullptr) return;
    const ListView& queue = uses_.window.lvwQueue;
    const std::string path =
        on([&] { return queue.SelectedRow().SubItem(queue_column::kProject); });
    if (on([&] { return uses_.compile.CompileProject(path, ""); })) {
      on([&] { MarkRow(path, Image::BuildOk); });
      on([&] { uses_.dialogs.Show({"Component built succesfully"}); });
    } else {
      on([&] { MarkRow(path, Image::BuildError); });
      on([&] { uses_.window.txtLogFile.visible.Set(true); });
      on([&] { uses_.dialogs.Show({"Failed to build component"}); });
    }
  });
}

std::string ImmediateBuild::SelectedNodePath() const {
  const TreeNode* node = uses_.window.tvwProjects.Selected();
  if (node == nullptr) throw RuntimeError(ErrorNumber::ObjectNotSet);
  return node->Text();
}

void ImmediateBuild::MarkRow(const std::string& path, Image icon) {
  ListRow* row = uses_.window.lvwQueue.Find(path);
  if (row == nullptr) throw RuntimeError(ErrorNumber::ElementNotFound, path);
  row->SetIcon(icon);
}

}  // namespace gorbex
