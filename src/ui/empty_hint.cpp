#include "ui/empty_hint.h"

#include <wx/button.h>
#include <wx/settings.h>
#include <wx/sizer.h>
#include <wx/stattext.h>

#include "ui/palette.h"
#include "ui/text_conversion.h"

namespace gorbex::ui {

EmptyHint::EmptyHint(wxWindow* parent, CommandIds& ids, const wxString& text,
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
  Bind(wxEVT_SIZE, [this, label, text, buttons](wxSizeEvent& event) {
    const int room = GetClientSize().x - FromDIP(16);
    label->SetLabel(text);
    label->Wrap(room);
    label->InvalidateBestSize();
    buttons->SetOrientation(wxHORIZONTAL);
    if (buttons->CalcMin().x > room) buttons->SetOrientation(wxVERTICAL);
    event.Skip();
  });
}

}  // namespace gorbex::ui
