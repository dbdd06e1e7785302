#pragma once

#include <array>

#include "core/command.h"

namespace gorbex {

inline constexpr std::size_t kRecentFiles = 4;

/// Every menu entry of the main window and of its pop-up menus.
struct MainMenu {
  Command mnuFileNew{"mnuFileNew", "&New", "Ctrl+N"};
  Command mnuFileNewFrom{"mnuFileNewFrom", "New &from Group or Folder...", "Ctrl+Shift+N"};
  Command mnuFileOpen{"mnuFileOpen", "&Open...", "Ctrl+O"};
  Command mnuFileSave{"mnuFileSave", "&Save", "Ctrl+S"};
  Command mnuFileSaveAs{"mnuFileSaveAs", "Save &As...", "Ctrl+Shift+S"};
  Command mnuFileBuild{"mnuFileBuild", "&Build", "F7"};
  Command mnuFileStop{"mnuFileStop", "S&top Build", "Ctrl+."};
  Command mnuFileGenScript{"mnuFileGenScript", "&Generate Script..."};
  std::array<Command, kRecentFiles> mnuFileMRU{Command{"mnuFileMRU", ""}, Command{"mnuFileMRU", ""},
                                               Command{"mnuFileMRU", ""},
                                               Command{"mnuFileMRU", ""}};
  Command mnuFileExit{"mnuFileExit", "E&xit", "Ctrl+Q"};

  Command mnuQueueAdd{"mnuQueueAdd", "A&dd Selected Project", "Ctrl+Ins"};
  Command mnuQueueAddAll{"mnuQueueAddAll", "Add A&ll Projects"};
  Command mnuQueueArrange{"mnuQueueArrange", "&Arrange", "Ctrl+R"};
  Command mnuQueueMoveUp{"mnuQueueMoveUp", "Move &Up", "Alt+Up"};
  Command mnuQueueMoveDown{"mnuQueueMoveDown", "Move &Down", "Alt+Down"};
  Command mnuQueueRemove{"mnuQueueRemove", "&Remove"};
  Command mnuQueueEmpty{"mnuQueueEmpty", "&Empty"};
  Command mnuQueueMarkAll{"mnuQueueMarkAll", "&Mark All"};
  Command mnuQueueUnMarkAll{"mnuQueueUnMarkAll", "U&nmark All"};
  Command mnuQueueMarkUses{"mnuQueueMarkUses", "Mark with All It U&ses"};
  Command mnuQueueMarkUsers{"mnuQueueMarkUsers", "Mark with All T&hat Use It"};
  Command mnuQueueMarkFailed{"mnuQueueMarkFailed", "Mar&k Failed"};
  Command mnuQueueMarkOutdated{"mnuQueueMarkOutdated", "Mark &Out of Date"};
  Command mnuQueueBuild{"mnuQueueBuild", "&Build Selected Item", "Shift+F7"};
  Command mnuQueueBuildFailed{"mnuQueueBuildFailed", "Build &Failed Again", "Ctrl+Shift+F7"};
  Command mnuQueueWhyFailed{"mnuQueueWhyFailed", "Show &Why It Failed"};
  Command mnuQueueTest{"mnuQueueTest", "&Test...", "Ctrl+T"};

  Command mnuToolsFind{"mnuToolsFind", "&Find...", "Ctrl+F"};
  Command mnuToolsFindNext{"mnuToolsFindNext", "Find &Next", "F3"};
  Command mnuToolsFindPrevious{"mnuToolsFindPrevious", "Find Previo&us", "Shift+F3"};
  Command mnuToolsBuildPath{"mnuToolsBuildPath", "Build &Path..."};
  Command mnuToolsVersion{"mnuToolsVersion", "&Version..."};
  Command mnuToolsBuildOptions{"mnuToolsBuildOptions", "Build &Options...", "Ctrl+,"};
  Command mnuToolsDependancies{"mnuToolsDependancies", "Scan &Dependancies", "Ctrl+D"};
  Command mnuToolsMissing{"mnuToolsMissing", "&Missing Components...", "Ctrl+Shift+D"};
  Command mnuToolsCheck{"mnuToolsCheck", "&Check...", "F8"};
  Command mnuToolsInBox{"mnuToolsInBox", "Check &Inbox"};
  Command mnuToolsLogin{"mnuToolsLogin", "&Login..."};
  Command mnuToolsLabel{"mnuToolsLabel", "La&bel..."};
  Command mnuToolsHighlight{"mnuToolsHighlight", "&Highlight Changed Projects"};
  Command mnuToolsGetLatest{"mnuToolsGetLatest", "&Get Latest"};  ///< the submenu of the two below
  Command mnuToolsGetLatestALL{"mnuToolsGetLatestALL", "&All Projects", "Ctrl+G"};
  Command mnuToolsGetLatestChanged{"mnuToolsGetLatestChanged", "&Changed Projects"};

  Command mnuWindowViewLogs{"mnuWindowViewLogs", "View &Logs...", "Ctrl+L"};
  Command mnuWindowDependencies{"mnuWindowDependencies", "&Dependencies", "Ctrl+U"};
  Command mnuWindowFailed{"mnuWindowFailed", "&Failed Projects", "Ctrl+F8"};
  Command mnuWindowNextFailure{"mnuWindowNextFailure", "Open Ne&xt Failure", "F4"};
  Command mnuWindowPreviousFailure{"mnuWindowPreviousFailure", "Open Pre&vious Failure",
                                   "Shift+F4"};
  Command mnuWindowLastRun{"mnuWindowLastRun", "Last &Run", "Ctrl+Shift+L"};
  Command mnuWindowNextPane{"mnuWindowNextPane", "&Next Pane", "F6"};
  Command mnuWindowPreviousPane{"mnuWindowPreviousPane", "&Previous Pane", "Shift+F6"};
  Command mnuHelpAbout{"mnuHelpAbout", "&About GorbexBuilder"};

  Command mnuDataPopupReg{"mnuDataPopupReg", "&Register"};
  Command mnuDataPopupUnReg{"mnuDataPopupUnReg", "&Unregister"};

  Command mnuDataPopupBrowse{"mnuDataPopupBrowse", "&Browse for Component..."};

  Command mnuTreePopupAddProject{"mnuTreePopupAddProject", "&Add Project...", "Ctrl+Shift+A"};
  Command mnuTreePopupRemoveProject{"mnuTreePopupRemoveProject", "&Remove Project"};
  Command mnuTreePopupGetLatest{"mnuTreePopupGetLatest", "&Get Latest"};
  Command mnuTreePopupBuildNowDefault{"mnuTreePopupBuildNowDefault", "&Build Now", "Ctrl+F7"};
  Command mnuTreePopupBuildNowNewLocation{"mnuTreePopupBuildNowNewLocation", "Build Now &To..."};

  // They act on the item under the pop-up menu, in any pane.
  Command mnuPopupOpenFolder{"mnuPopupOpenFolder", "O&pen Folder"};
  Command mnuPopupCopyPath{"mnuPopupCopyPath", "Cop&y Path"};
  Command mnuPopupCopyGuid{"mnuPopupCopyGuid", "Copy GU&ID"};
};

}  // namespace gorbex
