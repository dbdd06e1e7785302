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

/// The lines of a journal that begin with one of the words.
[[nodiscard]] Journal Only(const Journal& journal, const std::vector<std::string>& words);

/// The icons of a queue in order, such as "buildok builderror".
[[nodiscard]] std::string IconsOf(const ListView& queue);

}  // namespace gorbex::test
