#pragma once

#include <string>
#include <vector>

#include "analysis/project_display.h"
#include "check/group_check.h"
#include "core/check_form.h"
#include "core/main_window.h"

namespace gorbex {

/// Fills and serves the form of the findings.
class CheckList {
 public:
  /// Connects the form's controls. All must outlive the list.
  CheckList(frmCheck& form, const frmBuilder& window, ProjectDisplay& display,
            const GroupCheck& check, const FileReader& files);
  CheckList(const CheckList&) = delete;
  CheckList& operator=(const CheckList&) = delete;

  void mnuToolsCheck_Click();

  /// Checks the open build project and shows the list when something is found.
  void TellOfNew();

  /// Looks for errors that are quick to see. Such as "3 problems: Check..."; empty for none.
  [[nodiscard]] std::string ProblemsAtStart() const;

 private:
  void Refresh();
  void ShowRows();
  void SortBy(std::size_t column);
  void GoToProject();
  void OpenFile();
  void Activate();
  void Offer();
  [[nodiscard]] const Finding* Selected() const;

  frmCheck& form_;
  const frmBuilder& window_;
  ProjectDisplay& display_;
  const GroupCheck& check_;
  const FileReader& files_;
  Findings findings_;                                    ///< a row of the form's list each
  std::size_t sortedBy_ = static_cast<std::size_t>(-1);  ///< column; none at first
  bool isReversed_ = false;
  Subscriptions subscriptions_;
};

}  // namespace gorbex
