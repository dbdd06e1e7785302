#include "ui/form_layout.h"

#include <wx/stattext.h>

#include "ui/palette.h"
#include "ui/spacing.h"

namespace gorbex::ui {

FormLayout::FormLayout(wxDialog& dialog, FieldBinding& fields)
    : dialog_(dialog),
      fields_(fields),
      grid_(new wxFlexGridSizer(2, dialog.FromDIP(wxSize(kGap, kGap)))),
      column_(new wxBoxSizer(wxVERTICAL)) {
  grid_->AddGrowableCol(1);
  column_->Add(grid_, wxSizerFlags(1).Expand().Border(wxALL, dialog_.FromDIP(kMargin)));
}

wxTextCtrl* FormLayout::AddField(const wxString& caption, const wxString& name, TextBox& state,
                                 long style) {
  constexpr int kFieldWidth = 280;
  const bool isTall = (style & wxTE_MULTILINE) != 0;
  auto* heading = new wxStaticText(&dialog_, wxID_ANY, caption);
  auto* field = fields_.NewField(&dialog_, name, state, style,
                                 dialog_.FromDIP(wxSize(kFieldWidth, isTall ? 70 : -1)));
  grid_->Add(heading, isTall ? wxSizerFlags().Top() : wxSizerFlags().CentreVertical());
  grid_->Add(field, wxSizerFlags(1).Expand());
  if (isTall) grid_->AddGrowableRow(static_cast<std::size_t>(grid_->GetItemCount() / 2 - 1));
  return field;
}

void FormLayout::AddHint(const wxString& text) {
  auto* hint = new wxStaticText(&dialog_, wxID_ANY, text);
  hint->SetForegroundColour(HintColour());
  column_->Add(hint, wxSizerFlags().Border(wxLEFT | wxRIGHT, dialog_.FromDIP(kMargin)));
}

void FormLayout::Finish(Command& ok, Command& cancel) {
  auto* buttons = new wxStdDialogButtonSizer;
  auto* first = fields_.NewButton(&dialog_, ok, wxID_OK);
  buttons->AddButton(first);
  buttons->AddButton(fields_.NewButton(&dialog_, cancel, wxID_CANCEL));
  buttons->Realize();
  first->SetDefault();
  column_->Add(buttons, wxSizerFlags().Right().Border(wxALL, dialog_.FromDIP(kMargin)));
  dialog_.SetSizerAndFit(column_);
  dialog_.CentreOnParent();
}

}  // namespace gorbex::ui
