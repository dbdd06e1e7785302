#pragma once

#include <memory>
#include <string>

#include "core/dialogs.h"
#include "core/main_window.h"
#include "core/procedure.h"
#include "core/work.h"
#include "platform/runtime_error.h"
#include "platform/source_control.h"

namespace gorbex {

/// Where an item of the database is worked on; an empty path, and why, when that is not known.
struct LocalPlace {
  std::string path;
  std::string problem{};
};

/// The error of a spec that the database does not know.
[[nodiscard]] RuntimeError NoSuchItem(const std::string& spec);

/// The program's one source-control session: opened by the first command that needs it, and open
/// until the program ends. A login that the user cancels switches source control off for the run.
class SourceSafeSession {
 public:
  SourceSafeSession(frmBuilder& window, SourceControl& database, Work& work, Dialogs& dialogs,
                    ErrorReport& report)
      : window_(window), database_(database), work_(work), dialogs_(dialogs), report_(report) {}

  /// Called at the start of every source-control command; does nothing when the session is open,
  /// switched off, or being opened at this moment.
  void LoginToSourceSafe();

  /// Asks for the initialisation file, then logs in.
  void mnuToolsLogin_Click();

  [[nodiscard]] bool LoggedIn() const { return loggedIn_; }

  /// The user of the open database; empty while it is not open.
  [[nodiscard]] std::string DatabaseUser() const { return database_.UserName(); }

  /// Null when the database holds no item of that spec. Error while the session is closed.
  [[nodiscard]] std::unique_ptr<SourceControlItem> VSSItem(const std::string& spec) {
    return database_.VSSItem(spec);
  }

  [[nodiscard]] LocalPlace GetLocalPath(const std::string& spec);

  /// Why the database is not open; empty while it is.
  [[nodiscard]] std::string WhyClosed() const;

  [[nodiscard]] SourceControl& Database() { return database_; }

  /// Held during any work with the database. The client lets the user act meanwhile.
  [[nodiscard]] std::shared_ptr<void> Use() { return work_.Begin(Task::SourceControl); }

  /// Held during repeated work with the database, while no other command may change it.
  [[nodiscard]] std::shared_ptr<void> Reserve() { return work_.Begin(Task::Batch); }

  /// True, shown on the status line, when another command is at work.
  [[nodiscard]] bool Refuses();

 private:
  void Login(Procedure& on);
  void Open(Procedure& on, const std::string& user);
  void StayClosed(Procedure& on, bool cancelled);

  frmBuilder& window_;
  SourceControl& database_;
  Work& work_;
  Dialogs& dialogs_;
  ErrorReport& report_;
  bool loggedIn_ = false;
  bool disabled_ = false;
  std::string failure_;  ///< of the last login
};

}  // namespace gorbex
