#include "freshness/outdated_marks.h"

#include <cstddef>

#include "core/list_columns.h"

namespace gorbex {

void OutdatedMarks::mnuQueueMarkOutdated_Click() {
  freshness_.LookAgain();
  std::size_t marked = 0;
  for (const auto& row : window_.lvwQueue.Rows()) {
    const Judgement judgement = freshness_.Judge(row->SubItem(queue_column::kProject));
    if (!judgement.IsUpToDate()) ++marked;
    row->SetChecked(!judgement.IsUpToDate());
    row->SetNote(NoteOf(judgement));
  }
  const std::size_t others = window_.lvwQueue.Count() - marked;
  window_.SetStatus(std::to_string(marked) + (marked == 1 ? " row marked, " : " rows marked, ") +
                    std::to_string(others) + " up to date");
}

}  // namespace gorbex
