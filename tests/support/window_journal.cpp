#include "tests/support/window_journal.h"

#include <algorithm>

#include "core/text.h"

namespace gorbex::test {
namespace {

std::string Shown(const std::string& text) {
  return text;
}
std::string Shown(bool flag) {
  return FlagText(flag);
}
std::string Shown(int number) {
  return std::to_string(number);
}
std::string Shown(MousePointer pointer) {
  return pointer == MousePointer::Hourglass ? "hourglass" : "default";
}

}  // namespace

WindowJournal::WindowJournal(frmBuilder& window, ActivityLog& log, Journal& journal)
    : journal_(journal) {
  FollowQueue(window.lvwQueue);
  for (Command* entry : window.menu.All()) {
    // Stop is enabled exactly while a run goes on.
    if (entry == &window.menu.mnuFileStop) continue;
    Follow(entry->enabled.changed, "enabled " + std::string(entry->Name()));
  }
  Follow(window.tmrOutlook.enabled.changed, "timer");
  Follow(window.tmrOutlook.interval.changed, "interval");
  Follow(window.txtLogFile.visible.changed, "text box shown");
  Follow(window.txtLogFile.text.changed, "text box");
  Follow(window.stbStatus.changed, "status");
  Follow(window.mousePointer.changed, "pointer");
  Follow(log.written, "log");
}

template <class T>
void WindowJournal::Follow(Signal<T>& signal, const std::string& name) {
  subscriptions_.push_back(signal.Connect(
      [this, name](const T& value) { journal_.push_back(name + " " + Shown(value)); }));
}

void WindowJournal::FollowQueue(ListView& queue) {
  subscriptions_.push_back(
      queue.rowChanged.Connect([this](const ListRow& row, const RowChange& change) {
        if (change == RowChange::Icon) {
          journal_.push_back("icon " + row.Key() + " " + std::string(ImageKey(row.Icon())));
        }
        if (change == RowChange::EnsureVisible) journal_.push_back("visible " + row.Key());
      }));
  subscriptions_.push_back(queue.refreshed.Connect([this] { journal_.emplace_back("refresh"); }));
}

Journal Only(const Journal& journal, const std::vector<std::string>& words) {
  Journal lines;
  std::copy_if(journal.begin(), journal.end(), std::back_inserter(lines), [&](const auto& line) {
    return std::any_of(words.begin(), words.end(),
                       [&](const auto& word) { return line.starts_with(word + " "); });
  });
  return lines;
}

std::string IconsOf(const ListView& queue) {
  std::string icons;
  for (const auto& row : queue.Rows()) {
    icons.append(icons.empty() ? "" : " ").append(ImageKey(row->Icon()));
  }
  return icons;
}

}  // namespace gorbex::test
