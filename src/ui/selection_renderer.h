#pragma once

#include <wx/dc.h>
#include <wx/renderer.h>

namespace gorbex::ui {

/// Draws the selection of a list paler while the list does not have the keyboard, and everything
/// else as the system does.
class SelectionRenderer : public wxDelegateRendererNative {
 public:
  /// From now on all lists that the toolkit draws have such selections.
  static void Use();

 private:
  SelectionRenderer() : wxDelegateRendererNative(wxRendererNative::GetDefault()) {}
  void DrawItemSelectionRect(wxWindow* window, wxDC& dc, const wxRect& rect, int flags) override;
};

}  // namespace gorbex::ui
