#pragma once

#include <vector>

#include "analysis/dependency_marking.h"
#include "analysis/missing_components.h"
#include "analysis/project_display.h"
#include "core/missing_form.h"

namespace gorbex {

/// The procedures of the list of missing components.
class MissingList {
 public:
  /// Connects the form's controls. All must outlive the list.
  MissingList(frmMissing& form, frmBuilder& window, ProjectDisplay& display,
              DependencyMarking& marking);
  MissingList(const MissingList&) = delete;
  MissingList& operator=(const MissingList&) = delete;

  void mnuToolsMissing_Click();

  /// Takes the components from the tree's marks as they are now; the selections stay. Whoever shows
  /// a number or the form calls it when all marks are new. The number of components.
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
