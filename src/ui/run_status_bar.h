#pragma once

#include <wx/gauge.h>
#include <wx/statusbr.h>
#include <wx/stopwatch.h>
#include <wx/timer.h>

#include <chrono>
#include <cstddef>
#include <optional>
#include <vector>

#include "build/build_run.h"
#include "core/main_window.h"

namespace gorbex::ui {

/// The status bar: the program's status text, and while a build runs how far it is and for how
/// long the present project has been building.
class RunStatusBar : public wxStatusBar {
 public:
  RunStatusBar(wxWindow* parent, frmBuilder& window, RunEvents& events);

  /// Shows how many projects a scan found changed, until the next scan or run.
  void ShowChanged(std::size_t projects);

  /// Shows what the last scan found missing, except while a run's progress is in its place.
  void ShowMissing(const std::string& text);

  /// Shows what a look before a run has found; empty for nothing.
  void ShowProblems(const std::string& text);

  /// Shows whether there are unsaved changes.
  void ShowUnsaved(bool unsaved);

 private:
  void DoUpdateStatusText(int field) override;
  void FitFields();
  void Hear(const RunEvent& event);
  void Begin(const RunStarted& run);
  void Next(const ProjectStarted& project);
  void Take(const StepStarted& step);
  void Done(const ProjectCompiled& project);
  void Pace(const RunPaced& paced);
  void End(const RunEnded& run);
  void ShowTime();
  void ShowGauge(bool shown);
  void PlaceGauge();

  std::vector<int> widths_;  ///< of the fields
  wxGauge* gauge_;
  wxTimer timer_;
  wxStopWatch project_;
  bool isUnsaved_ = false;
  bool isSideBySide_ = false;          ///< several projects of the run are built at once
  wxString missing_;                   ///< what the last scan found
  wxString number_;                    ///< of the project being built, and of how many
  wxString step_;                      ///< of that project, after a comma
  std::optional<TimeEstimate> left_;   ///< of the run, when that project began
  std::size_t checked_ = 0;            ///< projects of the run
  std::chrono::milliseconds total_{};  ///< of all projects of the run
  Subscriptions subscriptions_;
};

}  // namespace gorbex::ui
