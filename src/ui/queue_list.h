#pragma once

#include <string>
#include <unordered_map>

#include "build/build_run.h"
#include "ui/state_list.h"

namespace gorbex::ui {

/// The build queue with the time each project took in the last run, or why the run skipped it.
class QueueList : public StateList {
 public:
  QueueList(wxWindow* parent, ListView& state, RunEvents& events);

 private:
  [[nodiscard]] wxString ExtraText(const ListRow& row, long column) const override;
  void Hear(const RunEvent& event);

  std::unordered_map<std::string, wxString> times_;  ///< or why there is none
  Subscription subscription_;
};

}  // namespace gorbex::ui
