#pragma once

#include <wx/menu.h>
#include <wx/toolbar.h>

#include <memory>
#include <vector>

#include "core/main_menu.h"
#include "ui/command_ids.h"

namespace gorbex::ui {

/// The main window's menus, pop-ups and tool bar, made of the program's commands. A command that
/// nothing handles is left out.
class WindowMenus {
 public:
  WindowMenus(wxFrame& frame, MainMenu& commands, CommandIds& ids);

  [[nodiscard]] std::unique_ptr<wxMenu> TreePopup();

  /// The menu of the tree where no project is at the pointer.
  [[nodiscard]] std::unique_ptr<wxMenu> GroupPopup();
  [[nodiscard]] std::unique_ptr<wxMenu> DataPopup();
  [[nodiscard]] std::unique_ptr<wxMenu> QueuePopup();

  /// Shows the recent files as they are now.
  void ShowRecentFiles();

 private:
  /// Null is a separator.
  using Entries = std::vector<Command*>;

  [[nodiscard]] std::unique_ptr<wxMenu> MenuOf(const Entries& entries);
  void Append(wxMenu& menu, Command& command);
  void AddMenu(const wxString& title, const Entries& entries);
  void MakeArrowKeys(const Entries& entries);
  void MakeToolBar(const Entries& entries);
  [[nodiscard]] Entries QueueEntries();

  wxFrame& frame_;
  MainMenu& commands_;
  CommandIds& ids_;
  wxMenuBar* bar_;
  wxMenu* file_ = nullptr;
  std::vector<wxMenuItem*> recent_;
  Subscriptions subscriptions_;
};

}  // namespace gorbex::ui
