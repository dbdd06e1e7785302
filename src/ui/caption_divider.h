#pragma once

#include <wx/panel.h>

namespace gorbex::ui {

/// A heading with a line that runs to the edge, above a pane of the main window.
class CaptionDivider : public wxPanel {
 public:
  CaptionDivider(wxWindow* parent, const wxString& caption);

  void SetCaption(const wxString& caption);

  // Nothing here is for the keyboard.
  [[nodiscard]] bool AcceptsFocus() const override { return false; }
  [[nodiscard]] bool AcceptsFocusFromKeyboard() const override { return false; }

 private:
  void OnPaint(wxPaintEvent& event);
  [[nodiscard]] wxSize DoGetBestClientSize() const override;

  wxString caption_;
};

}  // namespace gorbex::ui
