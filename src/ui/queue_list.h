#pragma once

#include <string>
#include <unordered_map>

#include "build/build_run.h"
#include "core/main_window.h"
#include "freshness/outdated_marks.h"
#include "ui/state_list.h"

namespace gorbex::ui {

/// The build queue with the time each project took in the last run, or why the run skipped it.
class QueueList : public StateList {
 public:
  QueueList(wxWindow* parent, frmBuilder& window, RunEvents& events, OutdatedMarks& outdated);

 private:
  [[nodiscard]] wxString ExtraText(const ListRow& row, long column) const override;
  [[nodiscard]] wxString NoteOf(const ListRow& row) const override;
  void Hear(const RunEvent& event);

  OutdatedMarks& outdated_;
  std::unordered_map<std::string, wxString> times_;  ///< or why there is none
  Subscriptions subscriptions_;
};

}  // namespace gorbex::ui
