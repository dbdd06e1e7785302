#include "scc/reference_browse.h"

#include <memory>

#include "core/file_tools.h"
#include "core/list_columns.h"
#include "core/text.h"

namespace gorbex {
namespace {

constexpr const char* kUnchanged = "Could not check-out project, reference not changed";

}  // namespace

void ReferenceBrowse::mnuDataPopupBrowse_Click() {
  if (uses_.session.Refuses()) return;
  Procedure(uses_.report, ": frmBuilder.mnuDataPopupBrowse_Click").Run([&](Procedure& on) {
    const ListRow* row = on([&] { return &uses_.window.lvwData.SelectedRow(); });
    if (row == nullptr) return;
    Change change{uses_.window.lvwData.Tag(), row->SubItem(reference_column::kComponent), {}};
    const auto chosen = on([&] {
      return uses_.dialogs.OpenFile(
          {"Search for component",
           "Objects (*.EXE, *.DLL,*.OCX)|*.EXE;*.DLL;*.OCX|All Files(*.*)|*.*", ""});
    });
    if (!chosen) return;
    change.newPath = *chosen;
    on([&] { uses_.session.LoginToSourceSafe(); });
    const auto use = uses_.session.Use();
    OfferToUnlock(on, change.project);
    Amend(on, change);
  });
}

void ReferenceBrowse::OfferToUnlock(Procedure& on, const std::string& project) {
  const auto info = on([&] { return uses_.files.Look(project); });
  if (!info || (info->attributes & file_attribute::kReadOnly) == 0) return;
  const Answer answer = on([&] {
    return uses_.dialogs.Show(
        {"Attempt to override read-only attribute?", Buttons::YesNo, MessageIcon::Question});
  });
  if (answer != Answer::Yes) return;
  on([&] { uses_.files.SetAttributes(project, file_attribute::kArchive); });
}

void ReferenceBrowse::Amend(Procedure& on, const Change& change) {
  const auto item = CheckOut(on, change.project);
  if (item == nullptr) return;
  const std::string comment = "Builder ammended ref " + change.oldPath + " to " + change.newPath;
  const bool isAmended = on([&] {
    return uses_.references.ReplaceInFile(change.project, change.oldPath, change.newPath);
  });
  if (!isAmended) return;
  on([&] { uses_.log.WriteLog(comment); });
  try {
    item->Checkin(comment);
  } catch (const RuntimeError& error) {
    on([&] { uses_.log.WriteLog(error.Description()); });
    on([&] { uses_.window.SetStatus("WARNING : Failed to check-in project"); });
    return;
  }
  on([&] { uses_.window.SetStatus("Project ammended OK"); });
  on([&] { uses_.display.RepointReferences(change.project, change.oldPath, change.newPath); });
}

// Null when the project is not checked out; the user knows why then.
std::unique_ptr<SourceControlItem> ReferenceBrowse::CheckOut(Procedure& on,
                                                             const std::string& project) {
  const std::string folder =
      on([&] { return uses_.window.ProjectMembers.Item(project).VSSProject; });
  if (folder.empty() || uses_.session.DatabaseUser().empty()) {
    on([&] { uses_.window.SetStatus(kUnchanged); });
    return nullptr;
  }
  const std::string spec = folder + "/" + GetFileFromPath(project);
  on([&] { uses_.window.SetStatus("Checking out project " + project); });
  std::string failure;
  try {
    auto item = uses_.session.VSSItem(spec);
    if (item == nullptr) throw NoSuchItem(spec);
    item->Checkout("Builder Ref Changed");
    on([&] { uses_.log.WriteLog("Checked Out " + project); });
    return item;
  } catch (const RuntimeError& error) {
    failure = error.Description();
  }
  on([&] { uses_.log.WriteLog("Failed to check out " + project); });
  on([&] {
    uses_.dialogs.Show(
        {failure + std::string(kLineBreak) + "Failed to check-out & apply changes "});
  });
  return nullptr;
}

}  // namespace gorbex
