#pragma once

#include <optional>
#include <string>
#include <string_view>

#include "core/controls.h"
#include "core/list_view.h"
#include "core/main_menu.h"
#include "core/member.h"
#include "core/property.h"
#include "core/tree_view.h"

namespace gorbex {

enum class MousePointer { Default, Hourglass };

/// The place of a window, in twips (1440 to the inch).
struct WindowPosition {
  float left = 0;
  float top = 0;
  float width = 0;
  float height = 0;
};

/// Fires every `interval` milliseconds while enabled; never with an interval of 0.
struct Timer {
  Property<bool> enabled{false};
  Property<int> interval{0};
  Signal<> elapsed;
};

/// The state of the main window: what front ends draw and what lasts while the program runs. It
/// holds no rule; the rules work on it.
struct frmBuilder {
  Property<std::string> caption;
  Property<std::optional<WindowPosition>> position;  ///< nothing before a window has a place
  Signal<> closeRequested;                           ///< as if the user closed the window
  MainMenu menu;
  TreeView tvwProjects;

  /// The nodes of the projects, in the order of the tree.
  [[nodiscard]] std::vector<TreeNode*> ProjectNodes() const;

  ListView lvwData;
  ListView lvwQueue;
  Property<std::string> stbStatus;  ///< the first panel
  TextBox txtLogFile;
  Timer tmrOutlook;
  Property<MousePointer> mousePointer{MousePointer::Default};

  Property<std::string> lblCompatability;
  Property<std::string> lblFilename;
  Property<std::string> lblProjectName;
  Property<std::string> lblVersion;
  Property<std::string> lblBinary;

  MemberCollection ProjectMembers;
  bool ProjectChanged = false;

  std::string fileName;            ///< the open build project file; empty while it has none
  std::string compilerPath;        ///< empty while no compiler is known
  std::string buildDirectory;      ///< empty for each project's own output folder
  std::string resultLogPath;       ///< in double quotes; empty before the first compile
  std::string registrationScript;  ///< of the last build
  std::string IniPath;             ///< source-control initialisation file
  std::string UserName;            ///< of the last source-control login
  bool isSessionRead = false;      ///< whether the stored values of these two were read

  /// Shows a text in the first panel of the status bar.
  void SetStatus(std::string_view text) { stbStatus.Set(std::string(text)); }

  /// Empties the details of the shown project and the list of its references.
  void ClearDetails();

  /// Removes every project, queue row and detail row and adds the tree's root.
  void ClearBuildProject();
};

}  // namespace gorbex
