#include "ui/missing_window.h"

#include <wx/sizer.h>

#include "ui/spacing.h"
#include "ui/text_conversion.h"

namespace gorbex::ui {
namespace {

constexpr double kComponentsShare = 0.6;
const wxSize kLeastSize(560, 220);
constexpr int kFirstHeight = 300;

std::vector<ListColumn> ComponentColumns() {
  return {{"Component", 110, false, 5}, {"Projects", 50, true, 6}, {"Version", 50, false, 2},
          {"File", 110, false, 4},      {"GUID", 80, false, 1},    {"Verdict", 110, false, 3}};
}

}  // namespace

MissingWindow::MissingWindow(wxWindow* parent, frmMissing& form, CommandIds& ids)
    : FormWindow(parent, "Missing Components", "frmMissing", form.visible,
                 [&form] { form.cmdClose.Execute(); }),
      form_(form),
      columns_(new wxSplitterWindow(this, wxID_ANY, wxDefaultPosition, wxDefaultSize,
                                    wxSP_LIVE_UPDATE | wxSP_3DSASH)),
      components_(new Pane(columns_, "Components")),
      projects_(new Pane(columns_, "Referenced by")) {
  list_ = new StateList(components_, "lvwComponents", form_.lvwComponents, ComponentColumns());
  Fill(*components_, list_, new EmptyHint(components_, ids, "No component is missing."));
  Fill(*projects_,
       new StateList(projects_, "lvwProjects", form_.lvwProjects,
                     {{"Project", 170, false, 3}, {"Folder", 60}}),
       new EmptyHint(projects_, ids, "The projects that reference the selected component."));
  columns_->SetMinimumPaneSize(FromDIP(150));
  columns_->SetSashGravity(kComponentsShare);
  columns_->SplitVertically(components_, projects_);
  auto* sizer = new wxBoxSizer(wxVERTICAL);
  sizer->Add(columns_, wxSizerFlags(1).Expand());
  sizer->Add(Foot(nullptr, {&form_.cmdCheck, &form_.cmdGoTo, &form_.cmdClose}),
             wxSizerFlags().Expand().Border(wxALL, FromDIP(kMargin)));
  wxDynamicCast(FindWindow("cmdGoTo"), wxButton)->SetDefault();
  SetContents(sizer, kLeastSize);
  Bind(wxEVT_IDLE, [this](wxIdleEvent& event) {
    event.Skip();
    ShowEmptyPanes();
  });
  subscriptions_.push_back(form_.visible.changed.Connect([this](const bool& visible) {
    ShowEmptyPanes();
    if (visible && list_->IsShown()) list_->SetFocus();
  }));
}

void MissingWindow::Fill(Pane& pane, StateList* list, EmptyHint* hint) {
  list->Bind(wxEVT_LIST_ITEM_ACTIVATED, [this](wxListEvent&) { form_.cmdGoTo.Execute(); });
  list->Bind(wxEVT_LIST_KEY_DOWN, [this](wxListEvent& event) {
    if (event.GetKeyCode() == WXK_F5) form_.cmdCheck.Execute();
    event.Skip();
  });
  pane.SetContent(list, hint);
}

void MissingWindow::ShowEmptyPanes() {
  components_->ShowEmpty(form_.lvwComponents.Count() == 0);
  projects_->ShowEmpty(form_.lvwProjects.Count() == 0);
}

void MissingWindow::Place() {
  PlaceAtFoot(kFirstHeight);
  columns_->SetSashPosition(static_cast<int>(GetSize().x * kComponentsShare));
}

}  // namespace gorbex::ui
