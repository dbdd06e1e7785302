#include "ui/find_bar.h"

#include <wx/bmpbuttn.h>
#include <wx/button.h>
#include <wx/sizer.h>

#include <utility>

#include "ui/spacing.h"

namespace gorbex::ui {

FindBar::FindBar(wxWindow* parent, std::vector<Place> places, const wxString& hint)
    : wxPanel(parent),
      places_(std::move(places)),
      heading_(new wxStaticText(this, wxID_ANY, {})),
      text_(new wxTextCtrl(this, wxID_ANY, {}, wxDefaultPosition, wxSize(FromDIP(260), -1), 0,
                           wxDefaultValidator, "txtFind")),
      found_(
          new wxStaticText(this, wxID_ANY, {}, wxDefaultPosition, wxDefaultSize, 0, "lblFound")) {
  auto* sizer = new wxBoxSizer(wxHORIZONTAL);
  const auto add = [&](wxWindow* part, int proportion = 0) {
    sizer->Add(part, wxSizerFlags(proportion).CentreVertical().Border(wxALL, FromDIP(kGap) / 2));
  };
  add(heading_);
  add(text_);
  for (const auto& [label, direction] :
       {std::pair("&Next", Direction::Next), std::pair("&Previous", Direction::Previous)}) {
    auto* button = new wxButton(this, wxID_ANY, label);
    button->Bind(wxEVT_BUTTON, [this, direction = direction](wxCommandEvent&) { Find(direction); });
    add(button);
  }
  add(found_, 1);
  auto* close = wxBitmapButton::NewCloseButton(this, wxID_ANY);
  close->Bind(wxEVT_BUTTON, [this](wxCommandEvent&) { ShowBar(false); });
  add(close);
  SetSizer(sizer);
  text_->SetHint(hint);
  text_->Bind(wxEVT_TEXT, [this](wxCommandEvent&) {
    found_->SetLabel({});
    if (!text_->IsEmpty()) Find(Direction::Here);
  });
  Bind(wxEVT_CHAR_HOOK, &FindBar::OnKey, this);
  Hide();
}

void FindBar::Open() {
  if (!text_->HasFocus()) {
    place_ = places_.size() - 1;
    while (place_ > 0 && !places_[place_].control->HasFocus()) --place_;
  }
  heading_->SetLabel(places_[place_].heading);
  found_->SetLabel({});
  ShowBar(true);
  text_->SetFocus();
  text_->SelectAll();
}

bool FindBar::Takes(const wxKeyEvent& event) {
  if (event.GetKeyCode() == 'F' && event.GetModifiers() == wxMOD_CONTROL) {
    Open();
    return true;
  }
  if (event.GetKeyCode() != WXK_F3) return false;
  Find(event.ShiftDown() ? Direction::Previous : Direction::Next);
  return true;
}

void FindBar::Find(Direction direction) {
  const wxString wanted = text_->GetValue();
  if (wanted.empty()) {
    Open();
    return;
  }
  const Hit hit = places_[place_].find(wanted, direction);
  found_->SetLabel(hit.of == 0 ? wxString("Not found")
                               : wxString::Format("%zu of %zu", hit.number, hit.of));
}

void FindBar::OnKey(wxKeyEvent& event) {
  const int key = event.GetKeyCode();
  if (key == WXK_ESCAPE) {
    ShowBar(false);
  } else if ((key == WXK_RETURN || key == WXK_NUMPAD_ENTER) && text_->HasFocus()) {
    Find(event.ShiftDown() ? Direction::Previous : Direction::Next);
  } else {
    event.Skip();
  }
}

void FindBar::ShowBar(bool shown) {
  Show(shown);
  GetParent()->Layout();
  if (!shown) places_[place_].control->SetFocus();
}

}  // namespace gorbex::ui
