#include "ui/selection_renderer.h"

#include <wx/settings.h>

#include <memory>

#include "ui/palette.h"

namespace gorbex::ui {

void SelectionRenderer::Use() {
  // The toolkit makes its first renderer when it is asked for one.
  static_cast<void>(Get());
  std::unique_ptr<wxRendererNative> renderer(new SelectionRenderer);
  renderer.reset(Set(renderer.release()));
}

void SelectionRenderer::DrawItemSelectionRect(wxWindow* window, wxDC& dc, const wxRect& rect,
                                              int flags) {
  const bool isPale =
      (flags & int{wxCONTROL_SELECTED}) != 0 && (flags & int{wxCONTROL_FOCUSED}) == 0;
  if (!isPale) {
    wxDelegateRendererNative::DrawItemSelectionRect(window, dc, rect, flags);
    return;
  }
  const wxDCPenChanger pen(dc, *wxTRANSPARENT_PEN);
  const wxDCBrushChanger brush(dc, PaleSelectionColour());
  dc.DrawRectangle(rect);
  // The toolkit's lists draw their texts next, in the colour for a dark selection.
  dc.SetTextForeground(wxSystemSettings::GetColour(wxSYS_COLOUR_LISTBOXTEXT));
}

}  // namespace gorbex::ui
