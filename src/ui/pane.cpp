#include "ui/pane.h"

#include <wx/button.h>
#include <wx/settings.h>
#include <wx/sizer.h>
#include <wx/stattext.h>

#include "ui/observe.h"
#include "ui/palette.h"
#include "ui/text_conversion.h"

namespace gorbex::ui {
namespace {

constexpr int kBorder = 4;

/// A sentence, and buttons for what to do first.
class EmptyHint : public wxPanel {
 public:
  EmptyHint(wxWindow* parent, CommandIds& ids, const wxString& text,
            const std::vector<Command*>& commands)
      : wxPanel(parent, wxID_ANY, wxDefaultPosition, wxDefaultSize, wxTAB_TRAVERSAL) {
    // Only its buttons are for the keyboard.
    m_container.DisableSelfFocus();
    SetBackgroundColour(wxSystemSettings::GetColour(wxSYS_COLOUR_LISTBOX));
    auto* label = new wxStaticText(this, wxID_ANY, text, wxDefaultPosition, wxDefaultSize,
                                   wxALIGN_CENTRE_HORIZONTAL | wxST_NO_AUTORESIZE);
    label->SetForegroundColour(HintColour());
    // In a column, since a pane can be narrow.
    auto* buttons = new wxBoxSizer(wxVERTICAL);
    for (Command* command : commands) {
      // By its id the button is greyed out together with the menu's entry.
      auto* button = new wxButton(this, ids.IdOf(*command), ToWx(command->caption.Get()));
      button->Bind(wxEVT_BUTTON, [command](wxCommandEvent&) { command->Execute(); });
      buttons->Add(button, wxSizerFlags().Expand().Border(wxALL, FromDIP(4)));
    }
    auto* sizer = new wxBoxSizer(wxVERTICAL);
    sizer->AddStretchSpacer(1);
    // In the whole width, since some systems draw a text wider than they measure it.
    sizer->Add(label, wxSizerFlags().Expand().Border(wxALL, FromDIP(8)));
    sizer->Add(buttons, wxSizerFlags().Centre());
    sizer->AddStretchSpacer(1);
    SetSizer(sizer);
    SetMinSize(wxSize(FromDIP(80), wxDefaultCoord));  // its text is wrapped
    Observe(*this, wxEVT_SIZE, [this, label, text, buttons] {
      const int room = GetClientSize().x - FromDIP(16);
      label->SetLabel(text);
      label->Wrap(room);
      label->InvalidateBestSize();
      buttons->SetOrientation(wxHORIZONTAL);
      if (buttons->CalcMin().x > room) buttons->SetOrientation(wxVERTICAL);
    });
  }
};

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

void Pane::SetContent(wxWindow* content, CommandIds& ids, const wxString& text,
                      const std::vector<Command*>& commands) {
  content_ = content;
  hint_ = new EmptyHint(this, ids, text, commands);
  for (wxWindow* part : {content_, hint_}) {
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
  wxWindow* coming = empty ? hint_ : content_;
  wxWindow* leaving = empty ? content_ : hint_;
  coming->Show();
  // On some systems a hidden control keeps the keyboard, and a hidden button is pressed by Enter.
  wxWindow* focus = FindFocus();
  if (focus != nullptr && leaving->IsDescendant(focus)) {
    coming->AcceptsFocusRecursively() ? coming->SetFocus() : static_cast<void>(focus->Navigate());
  }
  leaving->Hide();
  Layout();
}

wxSplitterWindow* NewSplitter(wxWindow* parent, int least, double gravity) {
  auto* made = new wxSplitterWindow(parent, wxID_ANY, wxDefaultPosition, wxDefaultSize,
                                    wxSP_LIVE_UPDATE | wxSP_3DSASH);
  made->SetMinimumPaneSize(parent->FromDIP(least));
  made->SetSashGravity(gravity);
  return made;
}

}  // namespace gorbex::ui
