#include "ui/form_layout.h"

#include <wx/stattext.h>

#include "ui/palette.h"
#include "ui/spacing.h"
#include "ui/text_conversion.h"

namespace gorbex::ui {
namespace {

constexpr int kFieldWidth = 280;

}  // namespace

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
  const bool isTall = (style & wxTE_MULTILINE) != 0;
  auto* heading = new wxStaticText(&dialog_, wxID_ANY, caption);
  auto* field = new wxTextCtrl(&dialog_, wxID_ANY, {}, wxDefaultPosition,
                               dialog_.FromDIP(wxSize(kFieldWidth, isTall ? 70 : -1)), style,
                               wxDefaultValidator, name);
  fields_.Join(*field, state);
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
  const auto button = [this](int id, Command& command) {
    auto* made = new wxButton(&dialog_, id, {}, wxDefaultPosition, wxDefaultSize, 0,
                              wxDefaultValidator, ToWx(command.Name()));
    fields_.Join(*made, command);
    return made;
  };
  auto* buttons = new wxStdDialogButtonSizer;
  auto* first = button(wxID_OK, ok);
  buttons->AddButton(first);
  buttons->AddButton(button(wxID_CANCEL, cancel));
  buttons->Realize();
  first->SetDefault();
  column_->Add(buttons, wxSizerFlags().Right().Border(wxALL, dialog_.FromDIP(kMargin)));
  dialog_.SetSizerAndFit(column_);
  dialog_.CentreOnParent();
}

}  // namespace gorbex::ui
