#pragma once

#include <wx/listbox.h>
#include <wx/panel.h>
#include <wx/textctrl.h>

#include <functional>
#include <string>

#include "core/controls.h"
#include "core/failed_projects.h"

namespace gorbex::ui {

/// The projects that failed, a section for each: what its compiler wrote or why it wrote nothing.
/// A list leads from section to section and opens the file where a project failed; a button hides
/// the pane.
class LogPane : public wxPanel {
 public:
  /// Opens the place where a project failed.
  using OpenFailure = std::function<void(const std::string& path)>;

  /// `box` says whether the failures are shown.
  LogPane(wxWindow* parent, const FailedProjects& failed, TextBox& box, OpenFailure open);

  /// Shows the section of a project; one that did not fail changes nothing.
  void GoTo(const std::string& path);

  /// Takes the keyboard to the list of sections.
  void Enter();

 private:
  [[nodiscard]] wxSizer* Head(TextBox& box);
  void ShowFailures();
  void ShowSection();
  void OpenShown();

  const FailedProjects& failed_;
  wxListBox* projects_;
  wxTextCtrl* text_;
  OpenFailure open_;
  std::string shown_;  ///< the project whose section is shown
  bool isStale_ = true;
  Subscription subscription_;
};

}  // namespace gorbex::ui
