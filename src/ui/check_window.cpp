#include "ui/check_window.h"

#include <wx/sizer.h>
#include <wx/stattext.h>

#include <algorithm>

#include "ui/spacing.h"
#include "ui/text_conversion.h"

namespace gorbex::ui {
namespace {

constexpr int kMostCheckWidth = 1200;
const wxSize kLeastCheckSize(560, 220);
constexpr int kFirstCheckHeight = 320;

}  // namespace

CheckWindow::CheckWindow(wxWindow* parent, frmCheck& form, CommandIds& ids)
    : FormWindow(parent, "Check", "frmCheck", form.visible, [&form] { form.cmdClose.Execute(); }),
      form_(form),
      pane_(new Pane(this, "Findings")) {
  list_ = new StateList(pane_, "lvwFindings", form_.lvwFindings,
                        {{"Where", 120, false, 4}, {"Problem", 240, false, 5}, {"Remedy", 160}},
                        StateList::Checks::No);
  list_->Bind(wxEVT_LIST_ITEM_ACTIVATED, [this](wxListEvent&) { form_.rowActivated.Emit(); });
  list_->Bind(wxEVT_LIST_COL_CLICK, [this](wxListEvent& event) {
    if (event.GetColumn() >= 0) {
      form_.headingClicked.Emit(static_cast<std::size_t>(event.GetColumn()));
    }
  });
  list_->Bind(wxEVT_LIST_KEY_DOWN, [this](wxListEvent& event) {
    if (event.GetKeyCode() == WXK_F5) form_.cmdCheck.Execute();
    event.Skip();
  });
  pane_->SetContent(list_, new EmptyHint(pane_, ids,
                                         "All is well: nothing was found that would make a "
                                         "run fail or do harm.",
                                         {}));
  auto* sizer = new wxBoxSizer(wxVERTICAL);
  sizer->Add(pane_, wxSizerFlags(1).Expand());
  sizer->Add(Buttons(), wxSizerFlags().Expand().Border(wxALL, FromDIP(kMargin)));
  SetSizer(sizer);
  SetMinClientSize(FromDIP(kLeastCheckSize));
  Bind(wxEVT_IDLE, [this](wxIdleEvent& event) {
    event.Skip();
    ShowEmpty();
  });
  subscriptions_.push_back(form_.visible.changed.Connect([this](const bool& visible) {
    ShowEmpty();
    if (visible && list_->IsShown()) list_->SetFocus();
  }));
}

wxSizer* CheckWindow::Buttons() {
  auto* row = new wxBoxSizer(wxHORIZONTAL);
  auto* summary = new wxStaticText(this, wxID_ANY, ToWx(form_.summary.Get()), wxDefaultPosition,
                                   wxDefaultSize, wxST_ELLIPSIZE_END, "summary");
  subscriptions_.push_back(form_.summary.changed.Connect(
      [summary](const std::string& text) { summary->SetLabelText(ToWx(text)); }));
  row->Add(summary, wxSizerFlags(1).CentreVertical());
  for (Command* command : {&form_.cmdCheck, &form_.cmdGoTo, &form_.cmdOpen, &form_.cmdClose}) {
    auto* button = new wxButton(this, wxID_ANY, ToWx(command->caption.Get()), wxDefaultPosition,
                                wxDefaultSize, 0, wxDefaultValidator, ToWx(command->Name()));
    fields_.Join(*button, *command);
    row->Add(button, wxSizerFlags().Border(wxLEFT, FromDIP(kGap)));
  }
  return row;
}

void CheckWindow::ShowEmpty() {
  const bool isEmpty = form_.lvwFindings.Count() == 0;
  // A list that is hidden would take the keyboard with it.
  if (isEmpty && list_->IsShown() && IsShown()) FindWindow("cmdClose")->SetFocus();
  pane_->ShowEmpty(isEmpty);
}

void CheckWindow::Place() {
  if (isPlaced_) return;
  isPlaced_ = true;
  const wxRect below = GetParent()->GetRect();
  const int width = std::min(below.width - 2 * FromDIP(kMargin), FromDIP(kMostCheckWidth));
  SetSize(width, FromDIP(kFirstCheckHeight));
  SetPosition({below.x + (below.width - GetSize().x) / 2, below.GetBottom() - GetSize().y});
}

}  // namespace gorbex::ui
