#pragma once

#include <wx/panel.h>
#include <wx/stattext.h>
#include <wx/textctrl.h>

#include "analysis/project_search.h"

namespace gorbex::ui {

/// A line below the panes that finds projects and references in the pane that the user comes from.
/// Return finds the next, Shift+Return the previous, Esc closes the line.
class FindBar : public wxPanel {
 public:
  /// The panes must outlive the bar.
  FindBar(wxWindow* parent, ProjectSearch& search, wxWindow& tree, wxWindow& queue);

  /// Shows the bar; what is typed is then looked for in the queue if that has the focus, else in
  /// the tree.
  void Open();

  /// As Open while nothing was typed yet.
  void Find(ProjectSearch::Direction direction);

 private:
  void OnKey(wxKeyEvent& event);
  void ShowBar(bool shown);

  ProjectSearch& search_;
  wxWindow& tree_;
  wxWindow& queue_;
  wxWindow* place_;  ///< that is searched
  wxStaticText* heading_;
  wxTextCtrl* text_;
  wxStaticText* found_;
};

}  // namespace gorbex::ui
