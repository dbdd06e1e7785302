#include "ui/check_window.h"

#include "ui/observe.h"

namespace gorbex::ui {

CheckWindow::CheckWindow(wxWindow* parent, frmCheck& form, CommandIds& ids)
    : FormWindow(parent, "Check", "frmCheck", form.visible, [&form] { form.cmdClose.Execute(); }),
      form_(form),
      pane_(new Pane(this, "Findings")) {
  list_ = new StateList(pane_, "lvwFindings", form_.lvwFindings,
                        {{"Where", 120, false, 4}, {"Problem", 240, false, 5}, {"Remedy", 160}});
  list_->Bind(wxEVT_LIST_ITEM_ACTIVATED, [this](wxListEvent&) { form_.rowActivated.Emit(); });
  list_->TellHeadings(form_.headingClicked);
  list_->TellKey(WXK_F5, [this] { form_.cmdCheck.Execute(); });
  pane_->SetContent(list_, ids,
                    "All is well: nothing was found that would make a run fail or do harm.");
  SetContents(
      pane_,
      Foot(&form_.summary, {&form_.cmdCheck, &form_.cmdGoTo, &form_.cmdOpen, &form_.cmdClose}),
      wxSize(560, 220));
  const auto showEmpty = [this] { pane_->ShowEmpty(form_.lvwFindings.Count() == 0); };
  Observe(*this, wxEVT_IDLE, showEmpty);
  subscriptions_.Add(form_.visible.changed, [this, showEmpty](const bool& visible) {
    showEmpty();
    if (visible && list_->IsShown()) list_->SetFocus();
  });
}

}  // namespace gorbex::ui
