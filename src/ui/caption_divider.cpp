#include "ui/caption_divider.h"

#include <wx/dcclient.h>
#include <wx/settings.h>

#include "ui/observe.h"
#include "ui/palette.h"

namespace gorbex::ui {
namespace {

constexpr int kSide = 4;
constexpr int kCaptionGap = 8;

}  // namespace

CaptionDivider::CaptionDivider(wxWindow* parent, const wxString& caption)
    : wxPanel(parent, wxID_ANY, wxDefaultPosition, wxDefaultSize, wxFULL_REPAINT_ON_RESIZE),
      caption_(caption) {
  SetFont(GetFont().Bold());
  Bind(wxEVT_PAINT, &CaptionDivider::OnPaint, this);
  Observe(*this, wxEVT_IDLE, [this] { FollowFocus(); });
}

// Nobody tells a window that the keyboard has left what is in it.
void CaptionDivider::FollowFocus() {
  wxWindow* focus = FindFocus();
  const bool hasKeyboard = focus != nullptr && GetParent()->IsDescendant(focus);
  if (hasKeyboard == hasKeyboard_) return;
  hasKeyboard_ = hasKeyboard;
  Refresh();
}

wxSize CaptionDivider::DoGetBestClientSize() const {
  const wxSize text = GetTextExtent(caption_);
  return {FromDIP(kSide) + text.x + FromDIP(kCaptionGap), text.y + FromDIP(8)};
}

void CaptionDivider::OnPaint(wxPaintEvent& /*event*/) {
  wxPaintDC dc(this);
  dc.SetFont(GetFont());
  const wxColour accent = LinkColour();
  dc.SetTextForeground(hasKeyboard_ ? accent
                                    : wxSystemSettings::GetColour(wxSYS_COLOUR_WINDOWTEXT));
  const wxSize size = GetClientSize();
  const wxSize text = dc.GetTextExtent(caption_);
  dc.DrawText(caption_, FromDIP(kSide), (size.y - text.y) / 2);
  dc.SetPen(hasKeyboard_ ? wxPen(accent, FromDIP(2)) : wxPen(HintColour(), 1));
  const int from = FromDIP(kSide) + text.x + FromDIP(kCaptionGap);
  if (from < size.x) dc.DrawLine(from, size.y / 2, size.x - FromDIP(kSide), size.y / 2);
}

}  // namespace gorbex::ui
