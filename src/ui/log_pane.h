#pragma once

#include <wx/panel.h>
#include <wx/textctrl.h>

#include "core/controls.h"
#include "core/failed_projects.h"

namespace gorbex::ui {

/// The projects that failed, each with what its compiler wrote or why it wrote nothing, and a
/// button that hides them again.
class LogPane : public wxPanel {
 public:
  /// `box` says whether the failures are shown.
  LogPane(wxWindow* parent, const FailedProjects& failed, TextBox& box);

 private:
  void ShowFailures();

  const FailedProjects& failed_;
  wxTextCtrl* text_;
  bool isStale_ = true;
  Subscription subscription_;
};

}  // namespace gorbex::ui
