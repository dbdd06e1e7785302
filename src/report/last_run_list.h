#pragma once

#include <cstddef>
#include <optional>
#include <string>
#include <vector>

#include "analysis/project_display.h"
#include "build/last_run.h"
#include "core/dialogs.h"
#include "core/last_run_form.h"
#include "core/main_window.h"
#include "core/procedure.h"
#include "platform/file_system.h"
#include "report/run_report.h"
#include "report/run_words.h"

namespace gorbex {

/// Fills and serves the form of the last run: a timeline, and a list of the run's projects. The
/// slowest project is first until the user sorts the list.
class LastRunList {
 public:
  struct Uses {
    frmLastRun& form;
    frmBuilder& window;
    LastRun& run;
    const ReportMaker& reports;
    ProjectDisplay& display;
    FileSystem& files;
    Dialogs& dialogs;
    ErrorReport& report;
  };

  /// Connects the form's controls. All must outlive the list.
  explicit LastRunList(const Uses& uses);
  LastRunList(const LastRunList&) = delete;
  LastRunList& operator=(const LastRunList&) = delete;

  void mnuWindowLastRun_Click();

  /// Shows how far the run is. To be called now and then during a run while the form is visible.
  void Tick();

  [[nodiscard]] const RunTimeline& Timeline() const { return timeline_; }
  [[nodiscard]] ProjectState StateOfBar(std::size_t bar) const;
  [[nodiscard]] std::string NameOfBar(std::size_t bar) const;

  /// The lines of a bar's tool tip.
  [[nodiscard]] std::string TipOfBar(std::size_t bar) const;

  /// The bar of the selected row; nothing when there is none.
  [[nodiscard]] std::optional<std::size_t> SelectedBar() const;
  void SelectBar(std::size_t bar);

  /// Selects the bar that began before or after the selected one, if there is one.
  void SelectNextBar(bool isForward);

 private:
  void Forget();
  void Refresh();
  [[nodiscard]] std::string Summary() const;
  void FillRows();
  void FillRow(ListRow& row, std::size_t project) const;
  [[nodiscard]] std::vector<std::size_t> SortedProjects() const;
  [[nodiscard]] bool IsBefore(std::size_t a, std::size_t b) const;
  void SortBy(std::size_t column);
  void SaveReport();
  void GoToProject();
  void Offer();

  Uses uses_;
  RunTimeline timeline_;
  std::vector<std::string> shown_;  ///< the paths of the rows before they were sorted
  std::size_t sortedBy_;
  bool isReversed_ = true;
  Subscriptions subscriptions_;
};

}  // namespace gorbex
