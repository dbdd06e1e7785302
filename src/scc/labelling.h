#pragma once

#include "core/dialogs.h"
#include "core/main_window.h"
#include "core/procedure.h"
#include "scc/source_safe_session.h"

namespace gorbex {

/// Stamps a label with a comment on an item of the database.
class Labelling {
 public:
  Labelling(frmBuilder& window, SourceSafeSession& session, Dialogs& dialogs, ErrorReport& report)
      : window_(window), session_(session), dialogs_(dialogs), report_(report) {}

  /// Offers to label what the first loaded project belongs to.
  void mnuToolsLabel_Click();

 private:
  frmBuilder& window_;
  SourceSafeSession& session_;
  Dialogs& dialogs_;
  ErrorReport& report_;
};

}  // namespace gorbex
