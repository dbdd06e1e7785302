#pragma once

#include <wx/splitter.h>
#include <wx/timer.h>

#include <optional>

#include "build/last_run.h"
#include "core/last_run_form.h"
#include "report/last_run_list.h"
#include "ui/command_ids.h"
#include "ui/form_window.h"
#include "ui/pane.h"
#include "ui/state_list.h"
#include "ui/timeline_view.h"

namespace gorbex::ui {

/// The timeline of the last run above the list of its projects, over their state.
class LastRunWindow : public FormWindow {
 public:
  struct Uses {
    frmLastRun& form;
    LastRunList& list;
    const LastRun& run;
    RegistryTools& registry;
    Command& build;  ///< offered while there was no run
  };

  /// All must outlive the window.
  LastRunWindow(wxWindow* parent, const Uses& uses, CommandIds& ids);

 private:
  void MakeTimeline(CommandIds& ids);
  void MakeList(CommandIds& ids);
  void Follow();

  /// Gives the timeline the room that its lanes need, until the user moves the sash.
  void FitTimeline();
  void Place() override;
  void HasPlace() override;

  Uses uses_;
  wxSplitterWindow* rows_;
  Pane* timelinePane_;
  Pane* listPane_;
  TimelineView* timeline_ = nullptr;
  StateList* list_ = nullptr;
  wxTimer timer_;
  std::optional<int> sash_;  ///< where it was put last
};

}  // namespace gorbex::ui
