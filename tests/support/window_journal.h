#pragma once

#include <algorithm>
#include <string>
#include <vector>

#include "core/activity_log.h"
#include "core/main_window.h"
#include "core/text.h"
#include "tests/support/journal.h"

namespace gorbex::test {

/// Writes what a user would see change into a journal, between the effects on files and processes:
/// "icon KEY IMAGE", "visible KEY", "refresh", "status TEXT", "text box TEXT", "text box shown
/// FLAG", "enabled ENTRY FLAG", "timer FLAG", "interval MILLISECONDS", "pointer hourglass",
/// "pointer default" and, for each line of the activity log, "log TEXT".
class WindowJournal {
 public:
  /// All three must outlive the journal's writer.
  WindowJournal(frmBuilder& window, ActivityLog& log, Journal& journal) : journal_(journal) {
    FollowQueue(window.lvwQueue);
    for (Command* entry : {&window.menu.mnuFileBuild, &window.menu.mnuFileGenScript}) {
      Follow(entry->enabled.changed, "enabled " + entry->Name());
    }
    Follow(window.tmrOutlook.enabled.changed, "timer");
    Follow(window.tmrOutlook.interval.changed, "interval");
    Follow(window.txtLogFile.visible.changed, "text box shown");
    Follow(window.txtLogFile.text.changed, "text box");
    Follow(window.stbStatus.changed, "status");
    Follow(window.mousePointer.changed, "pointer");
    Follow(log.written, "log");
  }
  WindowJournal(const WindowJournal&) = delete;
  WindowJournal& operator=(const WindowJournal&) = delete;

 private:
  static std::string Shown(const std::string& text) { return text; }
  static std::string Shown(bool flag) { return FlagText(flag); }
  static std::string Shown(int number) { return std::to_string(number); }
  static std::string Shown(MousePointer pointer) {
    return pointer == MousePointer::Hourglass ? "hourglass" : "default";
  }

  template <class T>
  void Follow(Signal<T>& signal, const std::string& name) {
    subscriptions_.push_back(signal.Connect(
        [this, name](const T& value) { journal_.push_back(name + " " + Shown(value)); }));
  }

  void FollowQueue(ListView& queue) {
    subscriptions_.push_back(
        queue.rowChanged.Connect([this](const ListRow& row, const RowChange& change) {
          if (change == RowChange::Icon) {
            journal_.push_back("icon " + row.Key() + " " + std::string(ImageKey(row.Icon())));
          }
          if (change == RowChange::EnsureVisible) journal_.push_back("visible " + row.Key());
        }));
    subscriptions_.push_back(queue.refreshed.Connect([this] { journal_.emplace_back("refresh"); }));
  }

  Journal& journal_;
  std::vector<Subscription> subscriptions_;
};

/// The lines of a journal that begin with one of the words.
[[nodiscard]] inline Journal Only(Journal journal, const std::vector<std::string>& words) {
  std::erase_if(journal, [&](const auto& line) {
    return std::none_of(words.begin(), words.end(),
                        [&](const auto& word) { return line.starts_with(word + " "); });
  });
  return journal;
}

/// The icons of a queue in order, such as "buildok builderror".
[[nodiscard]] inline std::string IconsOf(const ListView& queue) {
  std::string icons;
  for (const auto& row : queue.Rows()) {
    icons.append(icons.empty() ? "" : " ").append(ImageKey(row->Icon()));
  }
  return icons;
}

}  // namespace gorbex::test
