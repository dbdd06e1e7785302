#pragma once

#include <string>

#include "build/compile.h"
#include "build/registration_script.h"
#include "core/dialogs.h"
#include "core/main_window.h"
#include "core/procedure.h"

namespace gorbex {

/// The commands that compile one project at once. They prepare nothing: no sources are fetched, no
/// project file is changed, and neither the mail timer nor the Build command is held back.
class ImmediateBuild {
 public:
  struct Uses {
    frmBuilder& window;
    Dialogs& dialogs;
    ErrorReport& report;
    RegistrationScript& script;
    Compile& compile;
  };

  explicit ImmediateBuild(const Uses& uses) : uses_(uses) {}

  /// Both build the project of the selected tree node and start a new registration script.
  void mnuTreePopupBuildNowDefault_Click();
  void mnuTreePopupBuildNowNewLocation_Click();

  /// Builds the project of the selected queue row without changing the registration script.
  void mnuQueueBuild_Click();

 private:
  /// An empty folder means the build directory.
  void BuildSelectedNode(Procedure& on, const std::string& outDir);

  /// Error 91 when nothing is selected.
  [[nodiscard]] std::string SelectedNodePath() const;

  /// The row may be gone after a compile, which lets the user act: error 35601 then.
  void MarkRow(const std::string& path, Image icon);

  Uses uses_;
};

}  // namespace gorbex
