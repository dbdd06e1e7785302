#pragma once

#include <wx/frame.h>
#include <wx/menu.h>

#include <functional>
#include <memory>
#include <string>

#include "analysis/pointed_item.h"
#include "app/program.h"

namespace gorbex::ui {

/// Shows a folder, or opens a file, as the system does it; false when it cannot.
using ShowFolder = std::function<bool(const std::string& folder)>;

/// Opens the main window's pop-up menus, and runs the commands that concern what one was opened on.
class PopupMenus {
 public:
  /// Both must outlive the object.
  PopupMenus(wxFrame& frame, Program& program, ShowFolder showFolder);
  ~PopupMenus();
  PopupMenus(const PopupMenus&) = delete;
  PopupMenus& operator=(const PopupMenus&) = delete;

  /// Returns when the user has chosen a command or closed the menu.
  void Open(std::unique_ptr<wxMenu> menu, PointedItem item);

 private:
  void OpenFolder();

  wxFrame& frame_;
  Program& program_;
  ShowFolder showFolder_;
  PointedItem pointed_;  ///< that the last menu was opened on
};

}  // namespace gorbex::ui
