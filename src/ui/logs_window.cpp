#include "ui/logs_window.h"

#include <wx/sizer.h>

#include "ui/spacing.h"
#include "ui/text_conversion.h"

namespace gorbex::ui {

LogsWindow::LogsWindow(wxWindow* parent, frmLogs& form)
    : FormWindow(parent, "Activity Logs", "frmLogs", form.visible,
                 [&form] { form.cmdClose.Execute(); }),
      form_(form),
      heading_(new wxStaticText(this, wxID_ANY, "&Day:")),
      days_(new wxComboBox(this, wxID_ANY, {}, wxDefaultPosition, wxDefaultSize, 0, nullptr,
                           wxCB_READONLY, wxDefaultValidator, "cboLogDate")),
      text_(new wxTextCtrl(this, wxID_ANY, {}, wxDefaultPosition, wxDefaultSize,
                           wxTE_MULTILINE | wxTE_READONLY | wxTE_DONTWRAP, wxDefaultValidator,
                           "txtLog")) {
  text_->SetFont(wxFontInfo(text_->GetFont().GetPointSize()).Family(wxFONTFAMILY_TELETYPE));
  auto* close = new wxButton(this, wxID_CLOSE, {}, wxDefaultPosition, wxDefaultSize, 0,
                             wxDefaultValidator, "cmdClose");
  fields_.Join(*close, form_.cmdClose);
  auto* row = new wxBoxSizer(wxHORIZONTAL);
  row->Add(heading_, wxSizerFlags().CentreVertical());
  row->Add(days_, wxSizerFlags().CentreVertical().Border(wxLEFT, FromDIP(kGap)));
  auto* reload = new wxButton(this, wxID_ANY, "&Reload");
  row->Add(reload, wxSizerFlags().CentreVertical().Border(wxLEFT, FromDIP(kGap)));
  reload->Bind(wxEVT_BUTTON, [this](wxCommandEvent&) { ShowDay(); });
  auto* sizer = new wxBoxSizer(wxVERTICAL);
  const int margin = FromDIP(kMargin);
  sizer->Add(row, wxSizerFlags().Border(wxALL, margin));
  sizer->Add(text_, wxSizerFlags(1).Expand().Border(wxLEFT | wxRIGHT, margin));
  sizer->Add(close, wxSizerFlags().Right().Border(wxALL, margin));
  SetSizer(sizer);
  SetMinClientSize(FromDIP(wxSize(360, 240)));
  SetClientSize(FromDIP(wxSize(680, 440)));

  ShowDays();
  subscriptions_.push_back(form_.visible.changed.Connect([this](const bool& visible) {
    if (visible) days_->SetFocus();
  }));
  days_->Bind(wxEVT_COMBOBOX, [this](wxCommandEvent&) { ShowDay(); });
  // The toolkit does not tell of the same day chosen again.
  days_->Bind(wxEVT_COMBOBOX_CLOSEUP, [this](wxCommandEvent&) { ShowDay(); });
  subscriptions_.push_back(
      form_.cboLogDate.items.changed.Connect([this](const auto&) { ShowDays(); }));
  subscriptions_.push_back(form_.cboLogDate.selected.changed.Connect([this](const auto& day) {
    days_->SetSelection(day ? static_cast<int>(*day) : wxNOT_FOUND);
  }));
  subscriptions_.push_back(form_.txtLog.text.changed.Connect([this](const std::string& text) {
    text_->ChangeValue(ToWx(text));
    text_->ShowPosition(text_->GetLastPosition());
  }));
}

void LogsWindow::ShowDay() {
  const int day = days_->GetSelection();
  if (day != wxNOT_FOUND) form_.cboLogDate.selected.Set(static_cast<std::size_t>(day));
}

void LogsWindow::ShowDays() {
  wxArrayString names;
  for (const auto& name : form_.cboLogDate.items.Get()) names.push_back(ToWx(name));
  days_->Set(names);
  days_->SetMinSize(wxSize(FromDIP(160), -1));
  days_->InvalidateBestSize();
  Layout();
}

}  // namespace gorbex::ui
