#include "core/main_menu.h"

#include <algorithm>

namespace gorbex {

std::vector<Command*> MainMenu::All() {
  return {&mnuFileNew,
          &mnuFileOpen,
          &mnuFileSave,
          &mnuFileSaveAs,
          &mnuFileBuild,
          &mnuFileGenScript,
          &mnuFileMRU[0],
          &mnuFileMRU[1],
          &mnuFileMRU[2],
          &mnuFileMRU[3],
          &mnuQueueArrange,
          &mnuQueueMoveUp,
          &mnuQueueMoveDown,
          &mnuQueueRemove,
          &mnuQueueEmpty,
          &mnuQueueMarkAll,
          &mnuQueueUnMarkAll,
          &mnuToolsDependancies,
          &mnuToolsInBox,
          &mnuToolsLogin,
          &mnuToolsLabel,
          &mnuToolsHighlight,
          &mnuToolsGetLatest,
          &mnuDataPopupReg,
          &mnuDataPopupUnReg,
          &mnuTreePopupAddProject,
          &mnuTreePopupRemoveProject};
}

Command* MainMenu::Find(std::string_view name) {
  const auto all = All();
  const auto found = std::find_if(all.begin(), all.end(),
                                  [&](const Command* entry) { return entry->Name() == name; });
  return found == all.end() ? nullptr : *found;
}

}  // namespace gorbex
