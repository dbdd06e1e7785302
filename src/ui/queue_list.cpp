#include "ui/queue_list.h"

#include "ui/elapsed_time.h"

namespace gorbex::ui {
namespace {

constexpr long kTimeColumn = 5;

std::vector<ListColumn> Columns() {
  return {{"No.", 64},         {"Project", 160},  {"Depends on", 160}, {"Compatibility", 110},
          {"Last built", 130}, {"Time", 70, true}};
}

}  // namespace

QueueList::QueueList(wxWindow* parent, ListView& state, RunEvents& events)
    : StateList(parent, "lvwQueue", state, Columns(), Checks::Yes),
      subscription_(events.Connect([this](const RunEvent& event) { Hear(event); })) {}

wxString QueueList::ExtraText(const ListRow& row, long column) const {
  if (column != kTimeColumn) return {};
  const auto found = times_.find(row.Key());
  return found == times_.end() ? wxString() : ElapsedText(found->second);
}

void QueueList::Hear(const RunEvent& event) {
  if (std::holds_alternative<RunStarted>(event)) {
    times_.clear();
  } else if (const auto* compiled = std::get_if<ProjectCompiled>(&event)) {
    times_[compiled->path] = compiled->duration;
  } else {
    return;
  }
  ShowLater();
}

}  // namespace gorbex::ui
