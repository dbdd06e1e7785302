#pragma once

#include <string>

#include "core/main_window.h"
#include "scc/source_safe_session.h"

namespace gorbex {

/// Marks the projects in the tree whose working copies differ from the database.
class ChangeScan {
 public:
  ChangeScan(frmBuilder& window, SourceSafeSession& session) : window_(window), session_(session) {}

  /// Compares the files that lie directly in each project's own folder. A mark of an earlier scan
  /// stays.
  void mnuToolsHighlight_Click();

 private:
  [[nodiscard]] bool IsChanged(const std::string& spec);

  frmBuilder& window_;
  SourceSafeSession& session_;
};

}  // namespace gorbex
