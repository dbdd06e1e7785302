#pragma once

#include <wx/panel.h>

namespace gorbex::ui {

/// A heading with a line that runs to the edge, above a pane of a window. It has the colour of a
/// link while the keyboard is in its parent.
class CaptionDivider : public wxPanel {
 public:
  CaptionDivider(wxWindow* parent, const wxString& caption);

  // Nothing here is for the keyboard.
  [[nodiscard]] bool AcceptsFocus() const override { return false; }
  [[nodiscard]] bool AcceptsFocusFromKeyboard() const override { return false; }

 private:
  void FollowFocus();
  void OnPaint(wxPaintEvent& event);
  [[nodiscard]] wxSize DoGetBestClientSize() const override;

  const wxString caption_;
  bool hasKeyboard_ = false;  ///< its parent or something in it
};

}  // namespace gorbex::ui
