#pragma once

#include <vector>

#include "analysis/dependency_marking.h"
#include "analysis/missing_components.h"
#include "analysis/project_display.h"
#include "core/missing_form.h"

namespace gorbex {

/// Fills and serves the form of the missing components.
class MissingList {
 public:
  /// Connects the form's controls. All must outlive the list.
  MissingList(frmMissing& form, frmBuilder& window, ProjectDisplay& display,
              DependencyMarking& marking);
  MissingList(const MissingList&) = delete;
  MissingList& operator=(const MissingList&) = delete;

  void mnuToolsMissing_Click();

  /// Reads the components off the tree's present marks; the selections stay. To be called when all
  /// marks have been set again. Returns the number of components.
  std::size_t Refresh();

 private:
  void ShowProjects();
  void GoToProject();

  frmMissing& form_;
  frmBuilder& window_;
  ProjectDisplay& display_;
  std::vector<MissingComponent> components_;  ///< a row of the form's list each
  Subscription selection_;
};

}  // namespace gorbex
