#include "tests/support/window_journal.h"

#include "core/text.h"

namespace gorbex::test {

WindowJournal::WindowJournal(frmBuilder& window, ActivityLog& log, Journal& journal)
    : journal_(journal) {
  FollowQueue(window.lvwQueue);
  FollowMenu(window.menu);
  Follow(window.tmrOutlook.enabled, "timer");
  Follow(window.txtLogFile.visible, "text box shown");
  Follow(window.txtLogFile.text.changed, "text box");
  Follow(window.stbStatus.changed, "status");
  Follow(log.written, "log");
  subscriptions_.push_back(window.tmrOutlook.interval.changed.Connect(
      [this](int milliseconds) { Write("interval", std::to_string(milliseconds)); }));
  subscriptions_.push_back(window.mousePointer.changed.Connect([this](MousePointer pointer) {
    Write("pointer", pointer == MousePointer::Hourglass ? "hourglass" : "default");
  }));
}

void WindowJournal::FollowQueue(ListView& queue) {
  subscriptions_.push_back(
      queue.rowChanged.Connect([this](const ListRow& row, const RowChange& change) {
        if (change == RowChange::Icon) {
          Write("icon", row.Key() + " " + std::string(ImageKey(row.Icon())));
        }
        if (change == RowChange::EnsureVisible) Write("visible", row.Key());
      }));
  subscriptions_.push_back(queue.refreshed.Connect([this] { journal_.emplace_back("refresh"); }));
}

void WindowJournal::FollowMenu(MainMenu& menu) {
  for (Command* entry : menu.All()) Follow(entry->enabled, "enabled " + entry->Name());
}

void WindowJournal::Follow(Property<bool>& flag, const std::string& name) {
  subscriptions_.push_back(
      flag.changed.Connect([this, name](bool value) { Write(name, FlagText(value)); }));
}

void WindowJournal::Follow(Signal<std::string>& texts, const std::string& name) {
  subscriptions_.push_back(
      texts.Connect([this, name](const std::string& text) { Write(name, text); }));
}

void WindowJournal::Write(std::string_view what, std::string_view value) {
  journal_.push_back(std::string(what).append(" ").append(value));
}

}  // namespace gorbex::test
