#pragma once

#include <string>

#include "analysis/project_display.h"
#include "analysis/reference_update.h"
#include "core/activity_log.h"
#include "core/dialogs.h"
#include "core/main_window.h"
#include "core/procedure.h"
#include "platform/file_system.h"
#include "scc/source_safe_session.h"

namespace gorbex {

/// Points a reference of the shown project at another component file, with the project file checked
/// out and in again.
class ReferenceBrowse {
 public:
  struct Uses {
    frmBuilder& window;
    SourceSafeSession& session;
    FileSystem& files;
    ReferenceUpdate& references;
    ActivityLog& log;
    Dialogs& dialogs;
    ErrorReport& report;
    ProjectDisplay& display;
  };

  explicit ReferenceBrowse(const Uses& uses) : uses_(uses) {}

  void mnuDataPopupBrowse_Click();

 private:
  struct Change {
    std::string project;  ///< its path
    std::string oldPath;  ///< of the component
    std::string newPath;
  };

  void OfferToUnlock(Procedure& on, const std::string& project);
  void Amend(Procedure& on, const Change& change);
  [[nodiscard]] std::unique_ptr<SourceControlItem> CheckOut(Procedure& on,
                                                            const std::string& project);

  Uses uses_;
};

}  // namespace gorbex
