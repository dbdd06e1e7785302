#include "ui/pane.h"

#include <wx/sizer.h>

namespace gorbex::ui {
namespace {

constexpr int kBorder = 4;

}  // namespace

Pane::Pane(wxWindow* parent, const wxString& caption)
    : wxPanel(parent),
      caption_(new CaptionDivider(this, caption)),
      head_(new wxBoxSizer(wxHORIZONTAL)) {
  auto* sizer = new wxBoxSizer(wxVERTICAL);
  head_->Add(caption_, wxSizerFlags(1).CentreVertical());
  sizer->Add(head_, wxSizerFlags().Expand());
  SetSizer(sizer);
}

void Pane::AddBesideCaption(wxWindow* beside) {
  head_->GetItem(caption_)->SetProportion(0);
  head_->Add(beside, wxSizerFlags(1).CentreVertical().Border(wxLEFT | wxRIGHT, FromDIP(kBorder)));
}

void Pane::AddHeader(wxWindow* header) {
  header_ = header;
  GetSizer()->Add(header, wxSizerFlags().Expand().Border(wxALL, FromDIP(kBorder)));
}

void Pane::SetContent(wxWindow* content, EmptyHint* hint) {
  content_ = content;
  hint_ = hint;
  for (wxWindow* part : {content_, static_cast<wxWindow*>(hint_)}) {
    GetSizer()->Add(part,
                    wxSizerFlags(1).Expand().Border(wxLEFT | wxRIGHT | wxBOTTOM, FromDIP(kBorder)));
  }
  ShowEmpty(true);
}

int Pane::HeightWith(int content) const {
  const int border = FromDIP(kBorder);
  const int header = header_ == nullptr ? 0 : header_->GetBestSize().y + 2 * border;
  return head_->CalcMin().y + header + content + border;
}

void Pane::ShowEmpty(bool empty) {
  if (hint_->IsShown() == empty && content_->IsShown() != empty) return;
  wxWindow* hint = hint_;
  wxWindow* coming = empty ? hint : content_;
  wxWindow* leaving = empty ? content_ : hint;
  coming->Show();
  // On some systems a hidden control keeps the keyboard, and a hidden button is pressed by Enter.
  wxWindow* focus = FindFocus();
  if (focus != nullptr && leaving->IsDescendant(focus)) {
    coming->AcceptsFocusRecursively() ? coming->SetFocus() : static_cast<void>(focus->Navigate());
  }
  leaving->Hide();
  Layout();
}

}  // namespace gorbex::ui
