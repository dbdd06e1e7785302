#pragma once

#include <optional>
#include <string>

#include "core/dialogs.h"
#include "core/main_window.h"
#include "core/options.h"
#include "core/procedure.h"

namespace gorbex {

/// Asks for a folder to build into and gives it with a "\" at its end. Nothing when the choice was
/// cancelled, or for a folder that already ends in "\": the root of a drive cannot be a build
/// folder.
[[nodiscard]] std::optional<std::string> AskForDestination(Dialogs& dialogs);

/// The commands that set where, with which version and how builds are made.
class BuildSettings {
 public:
  BuildSettings(frmBuilder& window, clsOptions& options, Dialogs& dialogs, ErrorReport& report)
      : window_(window), options_(options), dialogs_(dialogs), report_(report) {}

  /// Chooses the build directory.
  void mnuToolsBuildPath_Click();

  /// Asks for the version that a build stamps into its projects. Cancel keeps the present one.
  void mnuToolsVersion_Click();

  /// Shows the options dialog. Its settings take effect when it closes.
  void mnuToolsBuildOptions_Click();

 private:
  [[nodiscard]] std::optional<std::string> AskForVersion();
  void ShowOptions();

  frmBuilder& window_;
  clsOptions& options_;
  Dialogs& dialogs_;
  ErrorReport& report_;
};

}  // namespace gorbex
