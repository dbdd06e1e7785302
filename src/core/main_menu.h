#pragma once

#include <array>
#include <string_view>
#include <vector>

#include "core/command.h"

namespace gorbex {

inline constexpr std::size_t kRecentFiles = 4;

/// Every menu entry of the main window and of its pop-up menus.
struct MainMenu {
  Command mnuFileNew{"mnuFileNew", "&New", "Ctrl+N"};
  Command mnuFileOpen{"mnuFileOpen", "&Open...", "Ctrl+O"};
  Command mnuFileSave{"mnuFileSave", "&Save", "Ctrl+S"};
  Command mnuFileSaveAs{"mnuFileSaveAs", "Save &As...", "Ctrl+Shift+S"};
  Command mnuFileBuild{"mnuFileBuild", "&Build", "F7"};
  Command mnuFileGenScript{"mnuFileGenScript", "&Generate Script..."};
  std::array<Command, kRecentFiles> mnuFileMRU{Command{"mnuFileMRU", ""}, Command{"mnuFileMRU", ""},
                                               Command{"mnuFileMRU", ""},
                                               Command{"mnuFileMRU", ""}};

  Command mnuQueueArrange{"mnuQueueArrange", "&Arrange", "Ctrl+R"};
  Command mnuQueueMoveUp{"mnuQueueMoveUp", "Move &Up", "Alt+Up"};
  Command mnuQueueMoveDown{"mnuQueueMoveDown", "Move &Down", "Alt+Down"};
  Command mnuQueueRemove{"mnuQueueRemove", "&Remove"};
  Command mnuQueueEmpty{"mnuQueueEmpty", "&Empty"};
  Command mnuQueueMarkAll{"mnuQueueMarkAll", "&Mark All"};
  Command mnuQueueUnMarkAll{"mnuQueueUnMarkAll", "U&nmark All"};

  Command mnuToolsDependancies{"mnuToolsDependancies", "Scan &Dependancies"};
  Command mnuToolsInBox{"mnuToolsInBox", "Check &Inbox"};
  Command mnuToolsLogin{"mnuToolsLogin", "&Login..."};
  Command mnuToolsLabel{"mnuToolsLabel", "La&bel..."};
  Command mnuToolsHighlight{"mnuToolsHighlight", "&Highlight Changed Projects"};
  Command mnuToolsGetLatest{"mnuToolsGetLatest", "&Get Latest"};

  Command mnuDataPopupReg{"mnuDataPopupReg", "&Register"};
  Command mnuDataPopupUnReg{"mnuDataPopupUnReg", "&Unregister"};

  Command mnuTreePopupAddProject{"mnuTreePopupAddProject", "&Add Project..."};
  Command mnuTreePopupRemoveProject{"mnuTreePopupRemoveProject", "&Remove Project"};

  /// In menu order.
  [[nodiscard]] std::vector<Command*> All();

  /// Null when there is no entry of that name; the first of a control array.
  [[nodiscard]] Command* Find(std::string_view name);
};

}  // namespace gorbex
