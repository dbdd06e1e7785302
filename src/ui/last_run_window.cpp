#include "ui/last_run_window.h"

#include <wx/sizer.h>
#include <wx/stattext.h>

#include <algorithm>

#include "ui/spacing.h"
#include "ui/text_conversion.h"

namespace gorbex::ui {
namespace {

const wxSize kFirstLastRunSize(980, 520);
const wxSize kLeastLastRunSize(480, 300);
constexpr int kRefresh = 250;
constexpr double kTimelineShare = 0.4;  // while it is empty
constexpr double kMostTimelineShare = 0.6;

}  // namespace

LastRunWindow::LastRunWindow(wxWindow* parent, const Uses& uses, CommandIds& ids)
    : FormWindow(parent, "Last Run", "frmLastRun", uses.form.visible,
                 [form = &uses.form] { form->cmdClose.Execute(); }),
      uses_(uses),
      place_(uses.registry, "LastRun"),
      rows_(new wxSplitterWindow(this, wxID_ANY, wxDefaultPosition, wxDefaultSize,
                                 wxSP_LIVE_UPDATE | wxSP_3DSASH)),
      timelinePane_(new Pane(rows_, "Timeline")),
      listPane_(new Pane(rows_, "Projects")),
      timer_(this) {
  MakeTimeline(ids);
  MakeList(ids);
  rows_->SetMinimumPaneSize(FromDIP(90));
  rows_->SplitHorizontally(timelinePane_, listPane_);
  auto* sizer = new wxBoxSizer(wxVERTICAL);
  sizer->Add(rows_, wxSizerFlags(1).Expand());
  sizer->Add(Buttons(), wxSizerFlags().Expand().Border(wxALL, FromDIP(kMargin)));
  SetSizer(sizer);
  SetMinClientSize(FromDIP(kLeastLastRunSize));
  Bind(wxEVT_TIMER, [this](wxTimerEvent&) {
    uses_.list.Tick();
    Follow();
  });
  subscriptions_.push_back(uses_.run.changed.Connect([this] { Follow(); }));
  subscriptions_.push_back(
      uses_.form.visible.changed.Connect([this](const bool& visible) { ShowOrHide(visible); }));
}

LastRunWindow::~LastRunWindow() {
  if (uses_.form.visible.Get()) place_.Store(*this);
}

void LastRunWindow::MakeTimeline(CommandIds& ids) {
  timeline_ = new TimelineView(timelinePane_, uses_.list, uses_.form);
  timelinePane_->SetContent(
      timeline_, new EmptyHint(timelinePane_, ids,
                               "Nothing was built yet.\n"
                               "A run is drawn here: who was built when, and what made it long.",
                               {&uses_.build}));
}

void LastRunWindow::MakeList(CommandIds& ids) {
  list_ = new StateList(listPane_, "lvwRunProjects", uses_.form.lvwProjects,
                        {{"Project", 150, false, 5},
                         {"Result", 80, false, 4},
                         {"Start", 60, true, 3},
                         {"Time", 60, true, 4},
                         {"Critical path", 90, false, 3},
                         {"Why", 200, false, 2}},
                        StateList::Checks::No);
  list_->Bind(wxEVT_LIST_ITEM_ACTIVATED, [this](wxListEvent&) { uses_.form.cmdGoTo.Execute(); });
  list_->Bind(wxEVT_LIST_COL_CLICK, [this](wxListEvent& event) {
    if (event.GetColumn() >= 0) {
      uses_.form.headingClicked.Emit(static_cast<std::size_t>(event.GetColumn()));
    }
  });
  listPane_->SetContent(
      list_, new EmptyHint(listPane_, ids, "The projects of the run, the slowest first.", {}));
}

wxSizer* LastRunWindow::Buttons() {
  auto* row = new wxBoxSizer(wxHORIZONTAL);
  frmLastRun& form = uses_.form;
  auto* summary = new wxStaticText(this, wxID_ANY, {}, wxDefaultPosition, wxDefaultSize,
                                   wxST_ELLIPSIZE_END, "summary");
  subscriptions_.push_back(form.summary.changed.Connect(
      [summary](const std::string& text) { summary->SetLabelText(ToWx(text)); }));
  row->Add(summary, wxSizerFlags(1).CentreVertical());
  for (Command* command : {&form.cmdGoTo, &form.cmdSave, &form.cmdClose}) {
    auto* button = new wxButton(this, wxID_ANY, ToWx(command->caption.Get()), wxDefaultPosition,
                                wxDefaultSize, 0, wxDefaultValidator, ToWx(command->Name()));
    fields_.Join(*button, *command);
    row->Add(button, wxSizerFlags().Border(wxLEFT, FromDIP(kGap)));
  }
  return row;
}

// The timer runs only while there is something to follow, and somebody to see it.
void LastRunWindow::Follow() {
  const bool follows = uses_.form.visible.Get() && uses_.run.IsGoing();
  if (follows && !timer_.IsRunning()) timer_.Start(kRefresh);
  if (!follows) timer_.Stop();
  const bool isEmpty = !uses_.run.HasBegun();
  timelinePane_->ShowEmpty(isEmpty);
  listPane_->ShowEmpty(isEmpty);
  if (uses_.form.visible.Get()) FitTimeline();
}

void LastRunWindow::ShowOrHide(bool visible) {
  Follow();
  if (!visible) {
    if (isPlaced_) place_.Store(*this);
  } else if (list_->IsShown()) {
    list_->SetFocus();
  }
}

void LastRunWindow::Place() {
  if (isPlaced_) return;
  isPlaced_ = true;
  if (!place_.Restore(*this)) {
    SetSize(FromDIP(kFirstLastRunSize));
    CentreOnParent();
  }
  Layout();
  sash_ = rows_->GetSashPosition();
  FitTimeline();
}

void LastRunWindow::FitTimeline() {
  if (!isPlaced_ || rows_->GetSashPosition() != sash_) return;
  const int all = rows_->GetClientSize().y;
  const int wanted = uses_.run.HasBegun() ? timelinePane_->HeightWith(timeline_->BestHeight())
                                          : static_cast<int>(all * kTimelineShare);
  rows_->SetSashPosition(std::min(static_cast<int>(all * kMostTimelineShare), wanted));
  sash_ = rows_->GetSashPosition();
}

}  // namespace gorbex::ui
