#pragma once

#include <cstddef>
#include <string>

#include "core/main_window.h"
#include "core/procedure.h"
#include "core/signal.h"
#include "scc/source_safe_session.h"

namespace gorbex {

/// Marks the projects in the tree whose working copies differ from the database.
class ChangeScan {
 public:
  ChangeScan(frmBuilder& window, SourceSafeSession& session) : window_(window), session_(session) {}

  /// Compares the files that lie directly in each project's own folder. A mark of an earlier scan
  /// stays.
  void mnuToolsHighlight_Click();

  /// A scan is over; the number of projects it found changed.
  Signal<std::size_t> scanned;

  /// A project that could not be compared, and why.
  Signal<std::string, std::string> notCompared;

 private:
  struct Project {
    std::string path;
    std::string spec;
  };

  void Scan(Procedure& on);
  [[nodiscard]] bool IsChanged(const Project& project);

  frmBuilder& window_;
  SourceSafeSession& session_;
};

}  // namespace gorbex
