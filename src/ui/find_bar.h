#pragma once

#include <wx/panel.h>
#include <wx/stattext.h>
#include <wx/textctrl.h>

#include <cstddef>
#include <functional>
#include <vector>

#include "analysis/project_search.h"

namespace gorbex::ui {

/// A line below the parts that can be searched. Typing finds, Return finds the next, Shift+Return
/// the previous, Esc closes the line.
class FindBar : public wxPanel {
 public:
  using Hit = ProjectSearch::Hit;
  using Direction = ProjectSearch::Direction;

  /// Something that can be searched; the control must outlive the bar.
  struct Place {
    wxWindow* control;
    wxString heading;  ///< before what is typed
    std::function<Hit(const wxString&, Direction)> find;
  };

  /// The first place is searched while no other has the focus when the bar is opened. The hint says
  /// what can be found.
  FindBar(wxWindow* parent, std::vector<Place> places, const wxString& hint);

  /// Shows the bar; what is typed is then looked for in the place that has the focus.
  void Open();

  /// Ctrl+F opens the bar, F3 and Shift+F3 find; false for every other key.
  bool Takes(const wxKeyEvent& event);

  /// As Open, if nothing was typed yet.
  void Find(Direction direction);

 private:
  void OnKey(wxKeyEvent& event);
  void ShowBar(bool shown);

  std::vector<Place> places_;
  std::size_t place_ = 0;  ///< that is searched
  wxStaticText* heading_;
  wxTextCtrl* text_;
  wxStaticText* found_;
};

}  // namespace gorbex::ui
