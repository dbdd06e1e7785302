#include "analysis/queue_marks.h"

#include <cstddef>

#include "analysis/dependency_graph.h"
#include "core/text.h"

namespace gorbex {
void QueueMarks::Mark(const std::string& path, Direction direction) {
  std::vector<const clsMember*> members;
  std::size_t start = window_.ProjectMembers.Count();
  for (const auto& member : window_.ProjectMembers) {
    if (member->path == path) start = members.size();
    members.push_back(member.get());
  }
  if (start == members.size()) throw RuntimeError(ErrorNumber::InvalidCall, path);
  const DependencyGraph graph(window_.ProjectMembers, group_);
  std::size_t marked = 0;
  std::size_t absent = 0;
  for (const std::size_t project :
       direction == Direction::Uses ? graph.WithUses(start) : graph.WithUsers(start)) {
    ListRow* row = window_.lvwQueue.Find(members[project]->path);
    ++(row == nullptr ? absent : marked);
    if (row != nullptr) row->SetChecked(true);
  }
  std::string text = Counted(marked, "row marked", "rows marked");
  if (absent > 0) {
    text += "; " + Counted(absent, "project is not in the queue", "projects are not in the queue");
  }
  window_.SetStatus(text);
}

void QueueMarks::mnuQueueMarkUses_Click() {
  Procedure(report_, ": frmBuilder.mnuQueueMarkUses_Click").Do([&] {
    MarkWithUses(window_.lvwQueue.SelectedRow().Key());
  });
}

void QueueMarks::mnuQueueMarkUsers_Click() {
  Procedure(report_, ": frmBuilder.mnuQueueMarkUsers_Click").Do([&] {
    MarkWithUsers(window_.lvwQueue.SelectedRow().Key());
  });
}

void QueueMarks::mnuQueueMarkFailed_Click() {
  for (const auto& row : window_.lvwQueue.Rows()) row->SetChecked(false);
  std::size_t marked = 0;
  for (const FailedProject& failed : failed_.All()) {
    ListRow* row = window_.lvwQueue.Find(failed.path);
    if (row == nullptr) continue;
    row->SetChecked(true);
    ++marked;
  }
  window_.SetStatus(Counted(marked, "row marked", "rows marked"));
}

}  // namespace gorbex
