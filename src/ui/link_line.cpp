#include "ui/link_line.h"

#include <wx/control.h>
#include <wx/dcclient.h>
#include <wx/renderer.h>

#include <algorithm>
#include <utility>

#include "ui/observe.h"
#include "ui/palette.h"
#include "ui/text_conversion.h"

namespace gorbex::ui {
namespace {

constexpr int kGapBetween = 18;  // with the separator in its middle
constexpr int kShortest = 60;

wxColour ColourOf(const BuildTerm& term) {
  if (!term.setBy->IsPossible()) return HintColour();
  return term.weight == BuildTerm::Weight::Warning ? WarningColour() : LinkColour();
}

wxString HelpOf(const Command& command) {
  wxString help = wxControl::RemoveMnemonics(ToWx(command.caption.Get()));
  help.Replace("...", "");
  if (!command.Shortcut().empty()) help += " (" + wxString(command.Shortcut()) + ")";
  return help;
}

}  // namespace

LinkLine::LinkLine(wxWindow* parent)
    : wxPanel(parent, wxID_ANY, wxDefaultPosition, wxDefaultSize,
              wxTAB_TRAVERSAL | wxWANTS_CHARS | wxFULL_REPAINT_ON_RESIZE, "termsInForce"),
      tip_(*parent) {
  Bind(wxEVT_PAINT, &LinkLine::OnPaint, this);
  Bind(wxEVT_KEY_DOWN, &LinkLine::OnKey, this);
  Observe(*this, wxEVT_SIZE, [this] { LayOut(); });
  Bind(wxEVT_MOTION, [this](wxMouseEvent& event) { Point(At(event.GetPosition())); });
  Bind(wxEVT_LEAVE_WINDOW, [this](wxMouseEvent&) { Point(kNone); });
  Bind(wxEVT_LEFT_UP, [this](wxMouseEvent& event) { Follow(At(event.GetPosition())); });
  RefreshWithFocus(*this);
}

void LinkLine::Show(std::vector<BuildTerm> terms) {
  if (terms == terms_) return;
  terms_ = std::move(terms);
  current_ = std::min(current_, terms_.size() - 1);
  pointed_ = kNone;
  LayOut();
  Refresh();
}

// Only the longest text is shortened: it is a folder, which its end still tells apart.
void LinkLine::LayOut() {
  wxClientDC dc(this);
  dc.SetFont(GetFont());
  links_.clear();
  int width = 0;
  std::size_t longest = 0;
  for (const BuildTerm& term : terms_) {
    const wxString text = ToWx(term.text);
    links_.push_back({text, wxRect(dc.GetTextExtent(text))});
    width += links_.back().place.width + FromDIP(kGapBetween);
    if (links_[longest].place.width < links_.back().place.width) longest = links_.size() - 1;
  }
  const int over = width - GetClientSize().x;
  if (over > 0 && !links_.empty()) {
    Link& cut = links_[longest];
    const int room = std::max(cut.place.width - over, FromDIP(kShortest));
    cut.text = wxControl::Ellipsize(cut.text, dc, wxELLIPSIZE_MIDDLE, room);
    cut.place = wxRect(dc.GetTextExtent(cut.text));
  }
  int left = 0;
  for (Link& link : links_) {
    link.place.SetPosition({left, (GetClientSize().y - link.place.height) / 2});
    left = link.place.GetRight() + 1 + FromDIP(kGapBetween);
  }
}

std::size_t LinkLine::At(const wxPoint& point) const {
  for (std::size_t i = 0; i < links_.size(); ++i) {
    if (links_[i].place.Contains(point)) return i;
  }
  return kNone;
}

void LinkLine::Point(std::size_t number) {
  if (number == pointed_) return;
  pointed_ = number;
  const bool isLink = number < terms_.size();
  SetCursor(isLink ? wxCursor(wxCURSOR_HAND) : wxNullCursor);
  if (isLink) {
    const BuildTerm& term = terms_[number];
    const wxString whole = ToWx(term.text);
    const wxString cut = links_[number].text == whole ? wxString() : whole + "\n";
    tip_.Show(*this, cut + HelpOf(*term.setBy));
  } else {
    tip_.Show(*this, {});
  }
  Refresh();
}

void LinkLine::Follow(std::size_t number) {
  if (number >= terms_.size()) return;
  current_ = number;
  Refresh();
  // The command may change the terms.
  terms_[number].setBy->Execute();
}

void LinkLine::OnKey(wxKeyEvent& event) {
  const int key = event.GetKeyCode();
  if (key == WXK_TAB) {
    Navigate(event.ShiftDown() ? wxNavigationKeyEvent::IsBackward
                               : wxNavigationKeyEvent::IsForward);
  } else if (key == WXK_RETURN || key == WXK_NUMPAD_ENTER || key == WXK_SPACE) {
    Follow(current_);
  } else if (key == WXK_LEFT || key == WXK_RIGHT) {
    const std::size_t last = terms_.empty() ? 0 : terms_.size() - 1;
    if (key == WXK_RIGHT) current_ = std::min(current_ + 1, last);
    if (key == WXK_LEFT && current_ > 0) --current_;
    Refresh();
  } else {
    event.Skip();
  }
}

void LinkLine::OnPaint(wxPaintEvent& /*event*/) {
  wxPaintDC dc(this);
  for (std::size_t i = 0; i < links_.size(); ++i) {
    const Link& link = links_[i];
    wxFont font = GetFont();
    font.SetUnderlined(i == pointed_);
    dc.SetFont(font);
    dc.SetTextForeground(ColourOf(terms_[i]));
    dc.DrawText(link.text, link.place.GetPosition());
    if (i + 1 < links_.size()) {
      dc.SetFont(GetFont());
      dc.SetTextForeground(HintColour());
      const wxSize dash = dc.GetTextExtent("-");
      dc.DrawText("-", link.place.GetRight() + 1 + (FromDIP(kGapBetween) - dash.x) / 2,
                  link.place.y);
    }
    if (i == current_ && HasFocus()) {
      wxRendererNative::Get().DrawFocusRect(this, dc, wxRect(link.place).Inflate(FromDIP(2)));
    }
  }
}

wxSize LinkLine::DoGetBestClientSize() const {
  return {FromDIP(80), GetTextExtent("Ag").y + FromDIP(8)};
}

}  // namespace gorbex::ui
