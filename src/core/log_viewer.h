#pragma once

#include <optional>
#include <string>
#include <vector>

#include "core/activity_log.h"
#include "core/dialogs.h"
#include "core/logs_form.h"
#include "core/procedure.h"
#include "core/signal.h"
#include "platform/file_system.h"

namespace gorbex {

/// Lists the files of the activity log by day and shows the chosen one as it is at that moment.
class LogViewer {
 public:
  /// Connects the form's controls; the form must outlive the viewer.
  LogViewer(frmLogs& form, const ActivityLog& log, const FileReader& files, Dialogs& dialogs,
            ErrorReport& report);
  LogViewer(const LogViewer&) = delete;
  LogViewer& operator=(const LogViewer&) = delete;

  /// Shows this program's logs, and today's log if there is one.
  void mnuWindowViewLogs_Click();

  /// The folder of the log files, given with or without a "\" at its end.
  void SetLogFilePath(std::string folder);

  /// Fills the list again, with nothing chosen, and shows the window. A missing folder has no logs;
  /// a folder that cannot be read is reported instead.
  void ShowLogs();

  /// Loads the chosen file; when it cannot be read, the reason is shown instead.
  void cboLogDate_Click();

  void cmdClose_Click();

 private:
  [[nodiscard]] std::vector<std::string> LogNames() const;
  [[nodiscard]] std::optional<std::vector<std::string>> LogNamesOrMessage();
  [[nodiscard]] std::string TextOf(const std::string& path) const;
  void ChooseToday();

  frmLogs& form_;
  const ActivityLog& log_;
  const FileReader& files_;
  Dialogs& dialogs_;
  ErrorReport& report_;
  Subscription chosen_;
};

}  // namespace gorbex
