#pragma once

#include <string>

#include "build/compiler_path.h"
#include "build/replaced_values.h"
#include "core/activity_log.h"
#include "core/build_project_file.h"
#include "core/dialogs.h"
#include "core/main_window.h"
#include "core/options.h"
#include "core/procedure.h"
#include "core/registry_tools.h"
#include "core/work.h"

namespace gorbex {

/// Brings the main window into its first state: recent files, session values, compiler, settings,
/// and the build project named on the command line.
class StartUp {
 public:
  struct Uses {
    frmBuilder& window;
    RegistryTools& registry;
    clsOptions& options;
    ActivityLog& log;
    Dialogs& dialogs;
    ErrorReport& report;
    BuildProjectFile& buildProject;
    const FileReader& files;
    CompilerPath& compiler;
    ReplacedValues& replaced;
    Work& work;  ///< who takes the turn to build writes back what a killed run has left
  };

  explicit StartUp(const Uses& uses) : uses_(uses) {}

  /// Empty, "show", or the path of a build project file.
  void SetCommandLine(std::string commandLine) { commandLine_ = std::move(commandLine); }

  /// The whole start, with its log line and its questions.
  void Form_Load();

  /// The start of a front end without a window: writes back values of a killed run and reads
  /// session values, registered compiler, settings and the tree's root, without log line or
  /// question. False as clsOptions::LoadSettings.
  bool ReadState();

 private:
  void WriteBackReplacedValues();
  void TellOfReplacedValues(Procedure& on);
  void RestorePosition(Procedure& on);
  void ReadSession();
  void ShowCompilerDetails();
  void OpenNamedProject(Procedure& on);

  Uses uses_;
  std::string commandLine_;
};

}  // namespace gorbex
