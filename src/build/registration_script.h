#pragma once

#include <string>

#include "core/dialogs.h"
#include "core/main_window.h"
#include "core/procedure.h"
#include "platform/file_system.h"

namespace gorbex {

/// The script that registers the components of the last build on another machine. Its text lives in
/// the main window.
class RegistrationScript {
 public:
  RegistrationScript(frmBuilder& window, FileSystem& files, Dialogs& dialogs, ErrorReport& report)
      : window_(window), files_(files), dialogs_(dialogs), report_(report) {}

  /// Starts a fresh script with its header.
  void Begin();

  /// Adds the registration of a component. Folder and file name are joined as they are.
  void AddComponent(const std::string& folder, const std::string& exeName);

  /// Ends the script.
  void End();

  /// Asks for a file and writes the script there.
  void mnuFileGenScript_Click();

  /// Writes the script, with one line break more, to a file. Errors as FileSystem::Write.
  void Save(const std::string& path);

 private:
  frmBuilder& window_;
  FileSystem& files_;
  Dialogs& dialogs_;
  ErrorReport& report_;
};

}  // namespace gorbex
