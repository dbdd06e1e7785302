#include "ui/logs_window.h"

#include <wx/sizer.h>

#include "ui/clipboard.h"
#include "ui/spacing.h"
#include "ui/text_conversion.h"
#include "ui/text_search.h"

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
                           "txtLog")),
      find_(new FindBar(this,
                        {{text_, "Find:",
                          [this](const wxString& wanted, FindBar::Direction direction) {
                            return FindText(*text_, wanted, direction);
                          }}},
                        "Text")) {
  text_->SetFont(wxFontInfo(text_->GetFont().GetPointSize()).Family(wxFONTFAMILY_TELETYPE));
  auto* sizer = new wxBoxSizer(wxVERTICAL);
  const int margin = FromDIP(kMargin);
  sizer->Add(Head(), wxSizerFlags().Border(wxALL, margin));
  sizer->Add(text_, wxSizerFlags(1).Expand().Border(wxLEFT | wxRIGHT, margin));
  sizer->Add(find_, wxSizerFlags().Expand().Border(wxLEFT | wxRIGHT, margin - FromDIP(kGap) / 2));
  sizer->Add(Foot(nullptr, {&form_.cmdClose}), wxSizerFlags().Expand().Border(wxALL, margin));
  SetContents(sizer, wxSize(360, 240));
  SetClientSize(FromDIP(wxSize(680, 440)));

  ShowDays();
  Bind(wxEVT_CHAR_HOOK, [this](wxKeyEvent& event) { event.Skip(!find_->Takes(event)); });
  subscriptions_.Add(form_.visible.changed, [this](const bool& visible) {
    if (visible) days_->SetFocus();
  });
  days_->Bind(wxEVT_COMBOBOX, [this](wxCommandEvent&) { ShowDay(); });
  // The toolkit does not tell of the same day chosen again.
  days_->Bind(wxEVT_COMBOBOX_CLOSEUP, [this](wxCommandEvent&) { ShowDay(); });
  subscriptions_.Add(form_.cboLogDate.items.changed, [this](const auto&) { ShowDays(); });
  subscriptions_.Add(form_.cboLogDate.selected.changed, [this](const auto& day) {
    days_->SetSelection(day ? static_cast<int>(*day) : wxNOT_FOUND);
  });
  subscriptions_.Add(form_.txtLog.text.changed, [this](const std::string& text) {
    text_->ChangeValue(ToWx(text));
    text_->ShowPosition(text_->GetLastPosition());
  });
}

wxSizer* LogsWindow::Head() {
  auto* row = new wxBoxSizer(wxHORIZONTAL);
  row->Add(heading_, wxSizerFlags().CentreVertical());
  row->Add(days_, wxSizerFlags().CentreVertical().Border(wxLEFT, FromDIP(kGap)));
  AddButton(*row, "&Reload", "cmdReload", [this] { ShowDay(); });
  AddButton(*row, "&Find...", "cmdFind", [this] { find_->Open(); });
  AddButton(*row, "C&opy", "cmdCopy", [this] { Copy(); });
  return row;
}

// Copies the selected text, or all of it when nothing is selected.
void LogsWindow::Copy() {
  const wxString selected = text_->GetStringSelection();
  CopyText(selected.empty() ? text_->GetValue() : selected);
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
