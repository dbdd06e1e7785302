#include "core/main_menu.h"

#include <algorithm>

namespace gorbex {

std::vector<Command*> MainMenu::All() {
  return {&mnuFileNew,
          &mnuFileOpen,
          &mnuFileSave,
          &mnuFileSaveAs,
          &mnuFileBuild,
          &mnuFileStop,
          &mnuFileGenScript,
          &mnuFileMRU[0],
          &mnuFileMRU[1],
          &mnuFileMRU[2],
          &mnuFileMRU[3],
          &mnuFileExit,
          &mnuQueueAdd,
          &mnuQueueAddAll,
          &mnuQueueArrange,
          &mnuQueueMoveUp,
          &mnuQueueMoveDown,
          &mnuQueueRemove,
          &mnuQueueEmpty,
          &mnuQueueMarkAll,
          &mnuQueueUnMarkAll,
          &mnuQueueBuild,
          &mnuQueueTest,
          &mnuToolsBuildPath,
          &mnuToolsVersion,
          &mnuToolsBuildOptions,
          &mnuToolsDependancies,
          &mnuToolsInBox,
          &mnuToolsLogin,
          &mnuToolsLabel,
          &mnuToolsHighlight,
          &mnuToolsGetLatest,
          &mnuToolsGetLatestALL,
          &mnuToolsGetLatestChanged,
          &mnuWindowViewLogs,
          &mnuHelpAbout,
          &mnuDataPopupReg,
          &mnuDataPopupUnReg,
          &mnuDataPopupBrowse,
          &mnuTreePopupAddProject,
          &mnuTreePopupRemoveProject,
          &mnuTreePopupGetLatest,
          &mnuTreePopupBuildNowDefault,
          &mnuTreePopupBuildNowNewLocation};
}

Command* MainMenu::Find(std::string_view name) {
  const auto all = All();
  const auto found = std::find_if(all.begin(), all.end(),
                                  [&](const Command* entry) { return entry->Name() == name; });
  return found == all.end() ? nullptr : *found;
}

}  // namespace gorbex
