#include "ui/find_bar.h"

#include <wx/bmpbuttn.h>
#include <wx/button.h>
#include <wx/sizer.h>

#include "ui/spacing.h"
#include "ui/text_conversion.h"

namespace gorbex::ui {

using Direction = ProjectSearch::Direction;

FindBar::FindBar(wxWindow* parent, ProjectSearch& search, wxWindow& tree, wxWindow& queue)
    : wxPanel(parent),
      search_(search),
      tree_(tree),
      queue_(queue),
      place_(&tree),
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
  text_->SetHint("Name, path, component or GUID");
  Bind(wxEVT_CHAR_HOOK, &FindBar::OnKey, this);
  Hide();
}

void FindBar::Open() {
  if (!text_->HasFocus()) place_ = queue_.HasFocus() ? &queue_ : &tree_;
  heading_->SetLabel(place_ == &queue_ ? "Find in the queue:" : "Find in the projects:");
  found_->SetLabel({});
  ShowBar(true);
  text_->SetFocus();
  text_->SelectAll();
}

void FindBar::Find(Direction direction) {
  const std::string wanted = FromWx(text_->GetValue());
  if (wanted.empty()) {
    Open();
    return;
  }
  const auto hit =
      place_ == &queue_ ? search_.FindRow(wanted, direction) : search_.FindNode(wanted, direction);
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
  if (!shown) place_->SetFocus();
}

}  // namespace gorbex::ui
