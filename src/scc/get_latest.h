#pragma once

#include <memory>
#include <string>

#include "core/activity_log.h"
#include "core/dialogs.h"
#include "core/latest_source.h"
#include "core/main_window.h"
#include "core/procedure.h"
#include "scc/source_safe_session.h"

namespace gorbex {

/// Brings the working copies of projects up to date.
class GetLatest : public LatestSource {
 public:
  GetLatest(frmBuilder& window, SourceSafeSession& session, ActivityLog& log, Dialogs& dialogs,
            ErrorReport& report)
      : window_(window), session_(session), log_(log), dialogs_(dialogs), report_(report) {}

  LatestResult GetLatestForProject(const std::string& projectKey) override;
  [[nodiscard]] std::shared_ptr<void> BeginBatch() override;

  /// Every project; failures are told on the status line and do not stop the others.
  void mnuToolsGetLatestALL_Click();

  /// The projects that are marked as changed, up to the first failure.
  void mnuToolsGetLatestChanged_Click();

  /// The selected project. Its mark is removed, whatever the result.
  void mnuTreePopupGetLatest_Click();

 private:
  struct Batch {
    bool isBegun = false;
    std::shared_ptr<void> reserved;
    std::shared_ptr<void> picture;
  };

  void LogIn();
  [[nodiscard]] LatestResult GetItem(const std::string& spec);
  bool GetWatched(const std::string& path);
  [[nodiscard]] bool IsLoaded();
  void GetMarked(Procedure& on);

  frmBuilder& window_;
  SourceSafeSession& session_;
  ActivityLog& log_;
  Dialogs& dialogs_;
  ErrorReport& report_;
  std::weak_ptr<Batch> batch_;
};

}  // namespace gorbex
