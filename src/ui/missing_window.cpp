#include "ui/missing_window.h"

#include "ui/observe.h"

namespace gorbex::ui {
namespace {

constexpr double kComponentsShare = 0.6;

std::vector<ListColumn> ComponentColumns() {
  return {{"Component", 110, false, 5}, {"Projects", 50, true, 6}, {"Version", 50, false, 2},
          {"File", 110, false, 4},      {"GUID", 80, false, 1},    {"Verdict", 110, false, 3}};
}

}  // namespace

MissingWindow::MissingWindow(wxWindow* parent, frmMissing& form, CommandIds& ids)
    : FormWindow(parent, "Missing Components", "frmMissing", form.visible,
                 [&form] { form.cmdClose.Execute(); }),
      form_(form),
      columns_(NewSplitter(this, 150, kComponentsShare)),
      components_(new Pane(columns_, "Components")),
      projects_(new Pane(columns_, "Referenced by")) {
  list_ = new StateList(components_, "lvwComponents", form_.lvwComponents, ComponentColumns());
  auto* projects = new StateList(projects_, "lvwProjects", form_.lvwProjects,
                                 {{"Project", 170, false, 3}, {"Folder", 60}});
  for (StateList* list : {list_, projects}) {
    list->Bind(wxEVT_LIST_ITEM_ACTIVATED, [this](wxListEvent&) { form_.cmdGoTo.Execute(); });
    list->TellKey(WXK_F5, [this] { form_.cmdCheck.Execute(); });
  }
  components_->SetContent(list_, ids, "No component is missing.");
  projects_->SetContent(projects, ids, "The projects that reference the selected component.");
  columns_->SplitVertically(components_, projects_);
  wxSizer* foot = Foot(nullptr, {&form_.cmdCheck, &form_.cmdGoTo, &form_.cmdClose});
  wxDynamicCast(FindWindow("cmdGoTo"), wxButton)->SetDefault();
  SetContents(columns_, foot, wxSize(560, 220));
  Observe(*this, wxEVT_IDLE, [this] { ShowEmptyPanes(); });
  subscriptions_.Add(form_.visible.changed, [this](const bool& visible) {
    ShowEmptyPanes();
    if (visible && list_->IsShown()) list_->SetFocus();
  });
}

void MissingWindow::ShowEmptyPanes() {
  components_->ShowEmpty(form_.lvwComponents.Count() == 0);
  projects_->ShowEmpty(form_.lvwProjects.Count() == 0);
}

void MissingWindow::Place() {
  PlaceAtFoot(300);
  columns_->SetSashPosition(static_cast<int>(GetSize().x * kComponentsShare));
}

}  // namespace gorbex::ui
