#include "ui/form_window.h"

#include "ui/icons.h"

namespace gorbex::ui {

FormWindow::FormWindow(wxWindow* parent, const wxString& title, const wxString& name,
                       Property<bool>& visible, const std::function<void()>& unload)
    : wxDialog(parent, wxID_ANY, title, wxDefaultPosition, wxDefaultSize,
               wxDEFAULT_DIALOG_STYLE | wxRESIZE_BORDER | wxMAXIMIZE_BOX, name),
      subscription_(visible.changed.Connect([this](const bool& shown) { ShowAsTold(shown); })) {
  SetIcons(ProgramIcons());
  Bind(wxEVT_CLOSE_WINDOW, [unload](wxCloseEvent&) { unload(); });
  // Escape means the same as the window's own close button.
  Bind(wxEVT_CHAR_HOOK, [this](wxKeyEvent& event) {
    if (event.GetKeyCode() == WXK_ESCAPE) {
      Close();
    } else {
      event.Skip();
    }
  });
}

void FormWindow::ShowAsTold(bool visible) {
  if (visible && !IsShown()) Place();
  Show(visible);
  if (visible) Raise();
}

}  // namespace gorbex::ui
