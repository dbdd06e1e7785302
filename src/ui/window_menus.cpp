#include "ui/window_menus.h"

#include <string_view>
#include <unordered_map>

#include "ui/icons.h"
#include "ui/text_conversion.h"

namespace gorbex::ui {
namespace {

/// The picture of a command by its name; empty for none.
std::string_view IconNameOf(const Command& command) {
  static const std::unordered_map<std::string_view, std::string_view> kIcons = {
      {"mnuFileNew", "new"},
      {"mnuFileOpen", "open"},
      {"mnuFileSave", "save"},
      {"mnuFileBuild", "build"},
      {"mnuFileStop", "stop"},
      {"mnuFileGenScript", "script"},
      {"mnuFileExit", "exit"},
      {"mnuQueueAdd", "queue-add"},
      {"mnuQueueArrange", "arrange"},
      {"mnuQueueMoveUp", "move-up"},
      {"mnuQueueMoveDown", "move-down"},
      {"mnuQueueRemove", "remove"},
      {"mnuQueueMarkAll", "mark-all"},
      {"mnuQueueTest", "test"},
      {"mnuToolsDependancies", "scan"},
      {"mnuToolsBuildOptions", "options"},
      {"mnuToolsLogin", "login"},
      {"mnuToolsLabel", "label"},
      {"mnuToolsGetLatest", "get-latest"},
      {"mnuWindowViewLogs", "log"},
      {"mnuHelpAbout", "about"},
      {"mnuTreePopupAddProject", "add-project"},
      {"mnuTreePopupRemoveProject", "remove-project"},
      {"mnuTreePopupBuildNowDefault", "build"},
  };
  const auto found = kIcons.find(command.Name());
  return found == kIcons.end() ? std::string_view() : found->second;
}

}  // namespace

WindowMenus::WindowMenus(wxFrame& frame, MainMenu& commands, CommandIds& ids)
    : frame_(frame), commands_(commands), ids_(ids), bar_(new wxMenuBar) {
  MainMenu& m = commands_;
  AddMenu("&File",
          {&m.mnuFileNew, &m.mnuFileNewFrom, &m.mnuFileOpen, &m.mnuFileSave, &m.mnuFileSaveAs,
           nullptr, &m.mnuFileBuild, &m.mnuFileStop, &m.mnuFileGenScript, nullptr, &m.mnuFileExit});
  file_ = bar_->GetMenu(0);
  AddMenu("&Project", {&m.mnuTreePopupAddProject, &m.mnuTreePopupRemoveProject, nullptr,
                       &m.mnuTreePopupBuildNowDefault, &m.mnuTreePopupBuildNowNewLocation, nullptr,
                       &m.mnuTreePopupGetLatest, nullptr, &m.mnuDataPopupReg, &m.mnuDataPopupUnReg,
                       &m.mnuDataPopupBrowse});
  AddMenu("&Queue", QueueEntries());
  AddMenu("&Tools",
          {&m.mnuToolsFind, &m.mnuToolsFindNext, &m.mnuToolsFindPrevious, nullptr, &m.mnuToolsCheck,
           &m.mnuToolsDependancies, &m.mnuToolsMissing, nullptr, &m.mnuToolsLogin,
           &m.mnuToolsGetLatest, &m.mnuToolsHighlight, &m.mnuToolsLabel, nullptr, &m.mnuToolsInBox,
           nullptr, &m.mnuToolsBuildPath, &m.mnuToolsVersion, &m.mnuToolsBuildOptions});
  AddMenu("&Window", {&m.mnuWindowDependencies, &m.mnuWindowLastRun, &m.mnuWindowFailed,
                      &m.mnuWindowNextFailure, &m.mnuWindowPreviousFailure, &m.mnuWindowViewLogs,
                      nullptr, &m.mnuWindowNextPane, &m.mnuWindowPreviousPane});
  AddMenu("&Help", {&m.mnuHelpAbout});
  frame_.SetMenuBar(bar_);
  MakeArrowKeys({&m.mnuQueueMoveUp, &m.mnuQueueMoveDown});
  MakeToolBar({&m.mnuFileNew, &m.mnuFileOpen, &m.mnuFileSave, nullptr, &m.mnuTreePopupAddProject,
               &m.mnuQueueAdd, nullptr, &m.mnuQueueArrange, &m.mnuQueueMoveUp, &m.mnuQueueMoveDown,
               nullptr, &m.mnuToolsDependancies, nullptr, &m.mnuFileBuild, &m.mnuFileStop, nullptr,
               &m.mnuToolsBuildOptions, &m.mnuWindowViewLogs});
  ShowRecentFiles();
  for (Command& entry : commands_.mnuFileMRU) {
    subscriptions_.Add(entry.visible.changed, [this](const bool&) { ShowRecentFiles(); });
  }
}

WindowMenus::Entries WindowMenus::QueueEntries() {
  MainMenu& m = commands_;
  return {&m.mnuQueueAdd,
          &m.mnuQueueAddAll,
          nullptr,
          &m.mnuQueueArrange,
          &m.mnuQueueMoveUp,
          &m.mnuQueueMoveDown,
          nullptr,
          &m.mnuQueueRemove,
          &m.mnuQueueEmpty,
          nullptr,
          &m.mnuQueueMarkAll,
          &m.mnuQueueUnMarkAll,
          &m.mnuQueueMarkUses,
          &m.mnuQueueMarkUsers,
          &m.mnuQueueMarkFailed,
          &m.mnuQueueMarkOutdated,
          nullptr,
          &m.mnuQueueBuild,
          &m.mnuQueueBuildFailed,
          &m.mnuQueueWhyFailed,
          &m.mnuQueueTest};
}

std::unique_ptr<wxMenu> WindowMenus::TreePopup() {
  MainMenu& m = commands_;
  return MenuOf({&m.mnuTreePopupAddProject, &m.mnuTreePopupRemoveProject, nullptr, &m.mnuQueueAdd,
                 &m.mnuTreePopupGetLatest, nullptr, &m.mnuTreePopupBuildNowDefault,
                 &m.mnuTreePopupBuildNowNewLocation, nullptr, &m.mnuPopupOpenFolder,
                 &m.mnuPopupCopyPath});
}

std::unique_ptr<wxMenu> WindowMenus::GroupPopup() {
  MainMenu& m = commands_;
  return MenuOf({&m.mnuTreePopupAddProject, &m.mnuQueueAddAll, nullptr, &m.mnuPopupOpenFolder,
                 &m.mnuPopupCopyPath, &m.mnuPopupCopyGuid});
}

std::unique_ptr<wxMenu> WindowMenus::DataPopup() {
  MainMenu& m = commands_;
  return MenuOf({&m.mnuDataPopupReg, &m.mnuDataPopupUnReg, nullptr, &m.mnuDataPopupBrowse, nullptr,
                 &m.mnuPopupOpenFolder, &m.mnuPopupCopyPath, &m.mnuPopupCopyGuid});
}

std::unique_ptr<wxMenu> WindowMenus::QueuePopup() {
  MainMenu& m = commands_;
  Entries entries = QueueEntries();
  entries.insert(entries.end(), {nullptr, &m.mnuPopupOpenFolder, &m.mnuPopupCopyPath});
  return MenuOf(entries);
}

std::unique_ptr<wxMenu> WindowMenus::MenuOf(const Entries& entries) {
  auto menu = std::make_unique<wxMenu>();
  bool separates = false;
  for (Command* command : entries) {
    if (command == nullptr) {
      separates = menu->GetMenuItemCount() > 0;
    } else if (command == &commands_.mnuToolsGetLatest) {
      menu->Append(
          ids_.IdOf(*command), ToWx(command->caption.Get()),
          MenuOf({&commands_.mnuToolsGetLatestALL, &commands_.mnuToolsGetLatestChanged}).release());
    } else if (command->IsHandled()) {
      if (separates) menu->AppendSeparator();
      separates = false;
      Append(*menu, *command);
    }
  }
  return menu;
}

void WindowMenus::Append(wxMenu& menu, Command& command) {
  const bool isSwitch = &command == &commands_.mnuToolsInBox;
  wxString text = ToWx(command.caption.Get());
  if (!command.Shortcut().empty()) text += "\t" + wxString(command.Shortcut());
  auto* item =
      new wxMenuItem(&menu, ids_.IdOf(command), text, {}, isSwitch ? wxITEM_CHECK : wxITEM_NORMAL);
  const auto icon = Icon(IconNameOf(command), IconSize(frame_));
  if (icon.IsOk() && !isSwitch) item->SetBitmap(icon);
  menu.Append(item);
}

void WindowMenus::AddMenu(const wxString& title, const Entries& entries) {
  bar_->Append(MenuOf(entries).release(), title);
}

// Some systems' menus take no arrow key for a shortcut.
void WindowMenus::MakeArrowKeys(const Entries& entries) {
  std::vector<wxAcceleratorEntry> keys;
  for (Command* command : entries) {
    wxAcceleratorEntry key;
    if (!key.FromString(wxString(command->Shortcut()))) continue;
    key.Set(key.GetFlags(), key.GetKeyCode(), ids_.IdOf(*command));
    keys.push_back(key);
  }
  frame_.SetAcceleratorTable(wxAcceleratorTable(static_cast<int>(keys.size()), keys.data()));
}

void WindowMenus::ShowRecentFiles() {
  for (wxMenuItem* item : recent_) file_->Destroy(item);
  recent_.clear();
  std::size_t at = file_->GetMenuItemCount() - 1;
  int number = 0;
  for (Command& entry : commands_.mnuFileMRU) {
    ++number;
    if (!entry.visible.Get()) continue;
    const auto path = wxControl::EscapeMnemonics(ToWx(entry.caption.Get()));
    recent_.push_back(
        file_->Insert(at++, ids_.IdOf(entry), wxString::Format("&%d  %s", number, path)));
  }
  if (!recent_.empty()) recent_.push_back(file_->InsertSeparator(at));
}

void WindowMenus::MakeToolBar(const Entries& entries) {
  wxToolBar* tools = frame_.CreateToolBar(wxTB_HORIZONTAL | wxTB_FLAT);
  const int size = IconSize(frame_) * 3 / 2;
  for (Command* command : entries) {
    if (command == nullptr) {
      tools->AddSeparator();
      continue;
    }
    if (!command->IsHandled()) continue;
    const auto caption = wxControl::RemoveMnemonics(ToWx(command->caption.Get()));
    const auto help = command->Shortcut().empty()
                          ? caption
                          : caption + " (" + wxString(command->Shortcut()) + ")";
    tools->AddTool(ids_.IdOf(*command), caption, Icon(IconNameOf(*command), size), help);
  }
  tools->Realize();
}

}  // namespace gorbex::ui
