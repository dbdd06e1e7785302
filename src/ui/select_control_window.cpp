#include "ui/select_control_window.h"

#include <wx/sizer.h>

#include "ui/palette.h"
#include "ui/spacing.h"
#include "ui/text_conversion.h"

namespace gorbex::ui {
namespace {

constexpr const char* kHint = "Without a value the property is only read.";
constexpr const char* kNothing = "This project has no public class and no user control.";

}  // namespace

SelectControlWindow::SelectControlWindow(wxWindow* parent, frmSelectControl& form,
                                         const std::function<void()>& unload)
    : FormWindow(parent, "Test Component", "frmSelectControl", form.visible, unload),
      form_(form),
      components_(new wxChoice(this, wxID_ANY, wxDefaultPosition, wxSize(FromDIP(300), -1), 0,
                               nullptr, 0, wxDefaultValidator, "cboComponents")),
      hint_(new wxStaticText(this, wxID_ANY, kHint)) {
  auto* grid = new wxFlexGridSizer(2, FromDIP(wxSize(kGap, kGap)));
  grid->AddGrowableCol(1);
  AddRow(*grid, "&Component:", components_);
  AddRow(*grid, "&Property:", fields_.NewField(this, "txtProperty", form_.txtProperty));
  AddRow(*grid, "&Value:", fields_.NewField(this, "txtValue", form_.txtValue));
  hint_->SetForegroundColour(HintColour());
  auto* sizer = new wxBoxSizer(wxVERTICAL);
  const int margin = FromDIP(kMargin);
  sizer->Add(grid, wxSizerFlags(1).Expand().Border(wxALL, margin));
  sizer->Add(hint_, wxSizerFlags().Border(wxLEFT | wxRIGHT, margin));
  sizer->Add(Foot(nullptr, {&form_.cmdTest, &form_.cmdClose}),
             wxSizerFlags().Expand().Border(wxALL, margin));
  SetSizerAndFit(sizer);

  ShowComponents();
  components_->Bind(wxEVT_CHOICE, [this](wxCommandEvent& event) {
    form_.cboComponents.selected.Set(static_cast<std::size_t>(event.GetSelection()));
  });
  subscriptions_.Add(form_.cboComponents.items.changed, [this](const auto&) { ShowComponents(); });
  subscriptions_.Add(form_.cboComponents.selected.changed, [this](const auto& item) {
    components_->SetSelection(item ? static_cast<int>(*item) : wxNOT_FOUND);
  });
}

void SelectControlWindow::AddRow(wxSizer& grid, const wxString& label, wxWindow* control) {
  auto* heading = new wxStaticText(this, wxID_ANY, label);
  // A label's access key leads to the control made after it.
  heading->MoveBeforeInTabOrder(control);
  grid.Add(heading, wxSizerFlags().CentreVertical());
  grid.Add(control, wxSizerFlags(1).Expand());
}

void SelectControlWindow::ShowComponents() {
  wxArrayString names;
  for (const auto& name : form_.cboComponents.items.Get()) names.push_back(ToWx(name));
  components_->Set(names);
  hint_->SetLabel(names.empty() ? kNothing : kHint);
  Layout();
  const auto selected = form_.cboComponents.selected.Get();
  components_->SetSelection(selected ? static_cast<int>(*selected) : wxNOT_FOUND);
}

}  // namespace gorbex::ui
