#include "ui/last_run_window.h"

#include <algorithm>

namespace gorbex::ui {

LastRunWindow::LastRunWindow(wxWindow* parent, const Uses& uses, CommandIds& ids)
    : FormWindow(parent, "Last Run", "frmLastRun", uses.form.visible,
                 [form = &uses.form] { form->cmdClose.Execute(); }),
      uses_(uses),
      rows_(NewSplitter(this, 90)),
      timelinePane_(new Pane(rows_, "Timeline")),
      listPane_(new Pane(rows_, "Projects")),
      timer_(this) {
  MakeTimeline(ids);
  MakeList(ids);
  rows_->SplitHorizontally(timelinePane_, listPane_);
  SetContents(
      rows_,
      Foot(&uses_.form.summary, {&uses_.form.cmdGoTo, &uses_.form.cmdSave, &uses_.form.cmdClose}),
      wxSize(480, 300));
  RememberPlace(uses_.registry, "LastRun");
  Bind(wxEVT_TIMER, [this](wxTimerEvent&) {
    uses_.list.Tick();
    Follow();
  });
  subscriptions_.Add(uses_.run.changed, [this] { Follow(); });
  subscriptions_.Add(uses_.form.visible.changed, [this](const bool& visible) {
    Follow();
    if (visible && list_->IsShown()) list_->SetFocus();
  });
}

void LastRunWindow::MakeTimeline(CommandIds& ids) {
  timeline_ = new TimelineView(timelinePane_, uses_.list, uses_.form);
  timelinePane_->SetContent(
      timeline_, ids,
      "Nothing was built yet.\n"
      "A run is drawn here: when each project was built, and why the run took so long.",
      {&uses_.build});
}

void LastRunWindow::MakeList(CommandIds& ids) {
  list_ = new StateList(listPane_, "lvwRunProjects", uses_.form.lvwProjects,
                        {{"Project", 150, false, 5},
                         {"Result", 80, false, 4, true},
                         {"Start", 60, true, 3, true},
                         {"Time", 60, true, 4, true},
                         {"Critical path", 90, false, 3, true},
                         {"Why", 200, false, 2}});
  list_->Bind(wxEVT_LIST_ITEM_ACTIVATED, [this](wxListEvent&) { uses_.form.cmdGoTo.Execute(); });
  list_->TellHeadings(uses_.form.headingClicked);
  listPane_->SetContent(list_, ids, "The projects of the run, the slowest first.");
}

// The timer runs only while there is something to follow, and somebody to see it.
void LastRunWindow::Follow() {
  constexpr int kRefresh = 250;
  const bool follows = uses_.form.visible.Get() && uses_.run.IsGoing();
  if (follows && !timer_.IsRunning()) timer_.Start(kRefresh);
  if (!follows) timer_.Stop();
  for (Pane* pane : {timelinePane_, listPane_}) pane->ShowEmpty(!uses_.run.HasBegun());
  if (uses_.form.visible.Get()) FitTimeline();
}

void LastRunWindow::Place() {
  SetSize(FromDIP(wxSize(980, 520)));
  CentreOnParent();
}

void LastRunWindow::HasPlace() {
  Layout();
  sash_ = rows_->GetSashPosition();
  FitTimeline();
}

void LastRunWindow::FitTimeline() {
  constexpr double kShare = 0.4;  // while it is empty
  constexpr double kMostShare = 0.6;
  if (!sash_ || rows_->GetSashPosition() != *sash_) return;
  const int all = rows_->GetClientSize().y;
  const int wanted = uses_.run.HasBegun() ? timelinePane_->HeightWith(timeline_->BestHeight())
                                          : static_cast<int>(all * kShare);
  rows_->SetSashPosition(std::min(static_cast<int>(all * kMostShare), wanted));
  sash_ = rows_->GetSashPosition();
}

}  // namespace gorbex::ui
