#pragma once

#include <string>
#include <vector>

#include "core/activity_log.h"
#include "core/main_window.h"
#include "tests/support/journal.h"

namespace gorbex::test {

/// Writes what a user would see change into a journal, between the effects on files and processes:
/// "icon KEY IMAGE", "visible KEY", "refresh", "status TEXT", "text box TEXT", "text box shown
/// FLAG", "enabled ENTRY FLAG", "timer FLAG", "interval MILLISECONDS", "pointer hourglass",
/// "pointer default" and, for each line of the activity log, "log TEXT".
class WindowJournal {
 public:
  /// All three must outlive the journal's writer.
  WindowJournal(frmBuilder& window, ActivityLog& log, Journal& journal);
  WindowJournal(const WindowJournal&) = delete;
  WindowJournal& operator=(const WindowJournal&) = delete;

 private:
  template <class T>
  void Follow(Signal<T>& signal, const std::string& name);
  void FollowQueue(ListView& queue);

  Journal& journal_;
  std::vector<Subscription> subscriptions_;
};

}  // namespace gorbex::test
