#include "ui/check_window.h"

#include <wx/sizer.h>

#include "ui/spacing.h"
#include "ui/text_conversion.h"

namespace gorbex::ui {
namespace {

const wxSize kLeastCheckSize(560, 220);
constexpr int kFirstCheckHeight = 320;

}  // namespace

CheckWindow::CheckWindow(wxWindow* parent, frmCheck& form, CommandIds& ids)
    : FormWindow(parent, "Check", "frmCheck", form.visible, [&form] { form.cmdClose.Execute(); }),
      form_(form),
      pane_(new Pane(this, "Findings")) {
  list_ = new StateList(pane_, "lvwFindings", form_.lvwFindings,
                        {{"Where", 120, false, 4}, {"Problem", 240, false, 5}, {"Remedy", 160}});
  list_->Bind(wxEVT_LIST_ITEM_ACTIVATED, [this](wxListEvent&) { form_.rowActivated.Emit(); });
  list_->TellHeadings(form_.headingClicked);
  list_->Bind(wxEVT_LIST_KEY_DOWN, [this](wxListEvent& event) {
    if (event.GetKeyCode() == WXK_F5) form_.cmdCheck.Execute();
    event.Skip();
  });
  pane_->SetContent(list_, new EmptyHint(pane_, ids,
                                         "All is well: nothing was found that would make a "
                                         "run fail or do harm."));
  auto* sizer = new wxBoxSizer(wxVERTICAL);
  sizer->Add(pane_, wxSizerFlags(1).Expand());
  sizer->Add(
      Foot(&form_.summary, {&form_.cmdCheck, &form_.cmdGoTo, &form_.cmdOpen, &form_.cmdClose}),
      wxSizerFlags().Expand().Border(wxALL, FromDIP(kMargin)));
  SetContents(sizer, kLeastCheckSize);
  const auto showEmpty = [this] { pane_->ShowEmpty(form_.lvwFindings.Count() == 0); };
  Bind(wxEVT_IDLE, [showEmpty](wxIdleEvent& event) {
    event.Skip();
    showEmpty();
  });
  subscriptions_.push_back(form_.visible.changed.Connect([this, showEmpty](const bool& visible) {
    showEmpty();
    if (visible && list_->IsShown()) list_->SetFocus();
  }));
}

void CheckWindow::Place() {
  PlaceAtFoot(kFirstCheckHeight);
}

}  // namespace gorbex::ui
