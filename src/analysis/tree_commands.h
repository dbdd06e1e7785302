#pragma once

#include "core/dialogs.h"
#include "core/main_window.h"
#include "core/project_findings.h"
#include "core/project_loader.h"
#include "core/project_views.h"

namespace gorbex {

/// The tree's pop-up commands that add a project to the build and take one out.
class TreeCommands {
 public:
  TreeCommands(frmBuilder& window, ProjectLoader& reader, ProjectViews& views,
               ProjectFindings& findings, Dialogs& dialogs)
      : window_(window), reader_(reader), views_(views), findings_(findings), dialogs_(dialogs) {}

  /// Adds one or more projects; tells which cannot be read.
  void mnuTreePopupAddProject_Click();
  void mnuTreePopupRemoveProject_Click();

 private:
  frmBuilder& window_;
  ProjectLoader& reader_;
  ProjectViews& views_;
  ProjectFindings& findings_;
  Dialogs& dialogs_;
};

}  // namespace gorbex
