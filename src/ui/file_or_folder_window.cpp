#include "ui/file_or_folder_window.h"

#include <wx/button.h>
#include <wx/sizer.h>
#include <wx/stattext.h>

#include "ui/icons.h"
#include "ui/spacing.h"
#include "ui/text_conversion.h"

namespace gorbex::ui {

FileOrFolderWindow::FileOrFolderWindow(wxWindow* parent, const FileChoice& choice,
                                       const Chooser& file, const Chooser& folder)
    : wxDialog(parent, wxID_ANY, ToWx(choice.title), wxDefaultPosition, wxDefaultSize,
               wxDEFAULT_DIALOG_STYLE | wxRESIZE_BORDER, "fileOrFolder") {
  constexpr int kPathWidth = 420;
  SetIcons(ProgramIcons());
  auto* heading = new wxStaticText(this, wxID_ANY, "&Path:");
  path_ = new wxTextCtrl(this, wxID_ANY, ToWx(choice.typed), wxDefaultPosition,
                         wxSize(FromDIP(kPathWidth), -1), 0, wxDefaultValidator, "txtPath");
  auto* grid = new wxFlexGridSizer(2, FromDIP(wxSize(kGap, kGap)));
  grid->AddGrowableCol(1);
  grid->Add(heading, wxSizerFlags().CentreVertical());
  grid->Add(path_, wxSizerFlags(1).Expand());
  grid->AddSpacer(0);
  grid->Add(Choosers(file, folder));
  auto* buttons = CreateStdDialogButtonSizer(wxOK | wxCANCEL);
  auto* sizer = new wxBoxSizer(wxVERTICAL);
  const int margin = FromDIP(kMargin);
  if (!choice.purpose.empty()) {
    auto* purpose = new wxStaticText(this, wxID_ANY, ToWx(choice.purpose));
    purpose->Wrap(FromDIP(kPathWidth));
    sizer->Add(purpose, wxSizerFlags().Border(wxLEFT | wxRIGHT | wxTOP, margin));
  }
  sizer->Add(grid, wxSizerFlags(1).Expand().Border(wxALL, margin));
  sizer->Add(buttons, wxSizerFlags().Expand().Border(wxALL, margin));
  SetSizerAndFit(sizer);
  CentreOnParent();
  FindWindow(wxID_OK)->Bind(wxEVT_UPDATE_UI,
                            [this](wxUpdateUIEvent& event) { event.Enable(!path_->IsEmpty()); });
  path_->SetFocus();
}

wxSizer* FileOrFolderWindow::Choosers(const Chooser& file, const Chooser& folder) {
  auto* row = new wxBoxSizer(wxHORIZONTAL);
  const auto add = [&](const wxString& label, const wxString& name, const Chooser& choose) {
    auto* button = new wxButton(this, wxID_ANY, label, wxDefaultPosition, wxDefaultSize, 0,
                                wxDefaultValidator, name);
    button->Bind(wxEVT_BUTTON, [this, choose](wxCommandEvent&) {
      const wxString chosen = choose();
      if (chosen.empty()) return;
      path_->SetValue(chosen);
      path_->SetInsertionPointEnd();
      FindWindow(wxID_OK)->SetFocus();
    });
    row->Add(button, wxSizerFlags().Border(wxRIGHT, FromDIP(kGap)));
  };
  add("Choose F&ile...", "cmdFile", file);
  add("Choose F&older...", "cmdFolder", folder);
  return row;
}

}  // namespace gorbex::ui
