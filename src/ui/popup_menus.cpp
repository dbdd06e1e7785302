#include "ui/popup_menus.h"

#include <utility>

#include "core/file_tools.h"
#include "ui/clipboard.h"
#include "ui/text_conversion.h"

namespace gorbex::ui {

PopupMenus::PopupMenus(wxFrame& frame, Program& program, ShowFolder showFolder)
    : frame_(frame), program_(program), showFolder_(std::move(showFolder)) {
  MainMenu& menu = program_.window.menu;
  menu.mnuPopupOpenFolder.SetHandler([this] { OpenFolder(); });
  menu.mnuPopupCopyPath.SetHandler([this] { CopyText(ToWx(pointed_.path)); });
  menu.mnuPopupCopyGuid.SetHandler([this] { CopyText(ToWx(pointed_.guid)); });
}

PopupMenus::~PopupMenus() {
  MainMenu& menu = program_.window.menu;
  for (auto* command : {&menu.mnuPopupOpenFolder, &menu.mnuPopupCopyPath, &menu.mnuPopupCopyGuid}) {
    command->SetHandler({});
  }
}

void PopupMenus::Open(std::unique_ptr<wxMenu> menu, PointedItem item) {
  pointed_ = std::move(item);
  MainMenu& commands = program_.window.menu;
  const bool hasPath = !pointed_.path.empty();
  commands.mnuPopupOpenFolder.enabled.Set(
      hasPath && FolderExists(program_.platform.files, StripPath(pointed_.path)));
  commands.mnuPopupCopyPath.enabled.Set(hasPath);
  commands.mnuPopupCopyGuid.enabled.Set(!pointed_.guid.empty());
  frame_.UpdateWindowUI();
  frame_.PopupMenu(menu.get());
}

void PopupMenus::OpenFolder() {
  const std::string folder = StripPath(pointed_.path);
  if (showFolder_(folder)) return;
  program_.dialogs.Show(
      {"The system cannot show the folder " + folder, Buttons::Ok, MessageIcon::Exclamation});
}

}  // namespace gorbex::ui
