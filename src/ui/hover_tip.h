#pragma once

#include <wx/event.h>
#include <wx/gdicmn.h>
#include <wx/window.h>

namespace gorbex::ui {

/// The tool tip of the item under the pointer, for a control with many items. A key or an opened
/// menu hides it until the pointer moves.
class HoverTip : public wxEvtHandler {
 public:
  /// `window` is any window of the same frame or dialog.
  explicit HoverTip(wxWindow& window);

  /// `over` is the control or its part under the pointer. An empty text means no tip.
  void Show(wxWindow& over, const wxString& text);

 private:
  void Hide(wxEvent& event);

  wxWindow* over_ = nullptr;  ///< that has the tip
  wxPoint hiddenAt_ = wxDefaultPosition;
};

}  // namespace gorbex::ui
