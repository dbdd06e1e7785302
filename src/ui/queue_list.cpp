#include "ui/queue_list.h"

#include "core/file_tools.h"
#include "ui/elapsed_time.h"
#include "ui/text_conversion.h"

namespace gorbex::ui {
namespace {

constexpr long kTimeColumn = 5;

std::vector<ListColumn> Columns() {
  return {{"No.", 90, false, 9},         {"Project", 160, false, 8},
          {"Depends on", 110, false, 4}, {"Compatibility", 84, false, 5},
          {"Last built", 110, false, 3}, {"Time", 50, true, 5}};
}

}  // namespace

QueueList::QueueList(wxWindow* parent, frmBuilder& window, RunEvents& events,
                     OutdatedMarks& outdated)
    : StateList(parent, "lvwQueue", window.lvwQueue, Columns(), Checks::Yes), outdated_(outdated) {
  subscriptions_.Add(events, [this](const RunEvent& event) { Hear(event); });
  subscriptions_.Add(window.tvwProjects.cleared, [this] { times_.clear(); });
}

wxString QueueList::ExtraText(const ListRow& row, long column) const {
  if (column != kTimeColumn) return {};
  const auto found = times_.find(row.Key());
  return found == times_.end() ? wxString() : found->second;
}

wxString QueueList::NoteOf(const ListRow& row) const {
  return ToWx(outdated_.NoteOf(row));
}

void QueueList::Hear(const RunEvent& event) {
  if (const auto* started = std::get_if<RunStarted>(&event)) {
    if (!started->isRepeat) times_.clear();
  } else if (const auto* compiled = std::get_if<ProjectCompiled>(&event)) {
    times_[compiled->path] = ElapsedText(compiled->duration);
  } else if (const auto* skipped = std::get_if<ProjectSkipped>(&event)) {
    times_[skipped->path] = "skipped: " + ToWx(GetFileFromPath(skipped->failed)) + " failed";
    MeasureLater();
  } else if (const auto* fresh = std::get_if<ProjectUpToDate>(&event)) {
    times_[fresh->path] = "up to date";
    MeasureLater();
  } else {
    return;
  }
  ShowLater();
}

}  // namespace gorbex::ui
