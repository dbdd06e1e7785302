#include "ui/hover_tip.h"

#include <wx/utils.h>

namespace gorbex::ui {

HoverTip::HoverTip(wxWindow& window) {
  wxWindow* top = wxGetTopLevelParent(&window);
  top->Bind(wxEVT_CHAR_HOOK, &HoverTip::Hide, this);
  top->Bind(wxEVT_MENU_OPEN, &HoverTip::Hide, this);
}

// A window that appears under the pointer makes the system tell of a motion that never was.
void HoverTip::Show(wxWindow& over, const wxString& text) {
  if (wxGetMousePosition() == hiddenAt_) return;
  hiddenAt_ = wxDefaultPosition;
  over_ = text.empty() ? nullptr : &over;
  text.empty() ? over.UnsetToolTip() : over.SetToolTip(text);
}

void HoverTip::Hide(wxEvent& event) {
  event.Skip();
  hiddenAt_ = wxGetMousePosition();
  if (over_ != nullptr) over_->UnsetToolTip();
  over_ = nullptr;
}

}  // namespace gorbex::ui
