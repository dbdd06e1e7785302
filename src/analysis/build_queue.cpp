#include "analysis/build_queue.h"

#include <algorithm>
#include <memory>
#include <unordered_map>
#include <utility>

#include "core/file_tools.h"
#include "core/list_columns.h"
#include "core/reference_nodes.h"
#include "core/reference_value.h"
#include "core/text.h"

namespace gorbex {
namespace {

std::unique_ptr<ListRow> MadeAnew(const ListRow& row) {
  auto made = std::make_unique<ListRow>(row.Key(), "1", Image::VbProject);
  made->SetSubItem(queue_column::kProject, row.SubItem(queue_column::kProject));
  made->SetSubItem(queue_column::kDependency, row.SubItem(queue_column::kDependency));
  return made;
}

}  // namespace

void BuildQueue::RefreshQueue() {
  std::size_t position = 0;
  for (const auto& row : window_.lvwQueue.Rows()) row->SetText(std::to_string(++position));
}

void BuildQueue::lvwQueue_DragDrop(std::string_view sourceControl) {
  if (sourceControl != "tvwProjects") return;
  const TreeNode* node = window_.tvwProjects.Selected();
  if (node == nullptr || !Add(node->Text())) return;
  Procedure::IgnoringErrors().Do([&] { RefreshQueue(); });
}

void BuildQueue::mnuQueueAdd_Click() {
  const TreeNode* node = ProjectAbove(window_.tvwProjects.Selected());
  if (node != nullptr) Add(node->Text());
}

void BuildQueue::mnuQueueAddAll_Click() {
  Procedure(report_, ": frmBuilder.mnuQueueAddAll_Click").Run([&](Procedure& on) {
    for (const TreeNode* node : window_.ProjectNodes()) on([&] { Add(node->Text()); });
  });
}

// The new row is the last, so no other row's number changes.
bool BuildQueue::Add(const std::string& path) {
  ListView& queue = window_.lvwQueue;
  if (queue.Find(path) != nullptr) return false;
  Procedure::IgnoringErrors().Run([&](Procedure& on) {
    ListRow& row = queue.Add(path, std::to_string(queue.Count() + 1), Image::VbProject);
    row.SetSubItem(queue_column::kProject, path);
    row.SetChecked(true);
    const clsMember* member = on([&] { return &window_.ProjectMembers.Item(path); });
    if (member != nullptr) {
      on([&] { ShowProjectFacts(row, *member); });
      on([&] { row.SetSubItem(queue_column::kDependency, DependencyOf(*member)); });
    }
    window_.ProjectChanged = true;
  });
  return true;
}

void BuildQueue::ShowProjectFacts(const std::string& path) {
  ListRow* row = window_.lvwQueue.Find(path);
  const clsMember* member = window_.ProjectMembers.Find(path);
  if (row != nullptr && member != nullptr) ShowProjectFacts(*row, *member);
}

void BuildQueue::ShowProjectFacts(ListRow& row, const clsMember& member) const {
  row.SetSubItem(queue_column::kBuilt,
                 GetFileAmmendedTime(files_, JoinPath(window_.buildDirectory, member.EXEName)));
  row.SetSubItem(queue_column::kCompatibility, CompatibilityText(member.BinaryCompat));
}

std::string BuildQueue::DependencyOf(const clsMember& member) const {
  std::string dependency;
  Procedure::IgnoringErrors().Run([&](Procedure& on) {
    for (const auto* values : {&member.Refs, &member.Objects}) {
      for (const std::string& value : *values) {
        on([&] { dependency = group_.FindGroupDependency(ComponentPath(value), member.path); });
        if (!dependency.empty()) return;
      }
    }
  });
  return dependency;
}

void BuildQueue::mnuQueueArrange_Click() {
  Procedure(report_, ": frmBuilder.mnuQueueArrange_Click").Run([&](Procedure& on) {
    std::vector<QueueArrangement::Row> rows;
    std::vector<std::size_t> shown;
    for (const auto& row : window_.lvwQueue.Rows()) {
      shown.push_back(rows.size());
      rows.push_back({row->SubItem(queue_column::kProject), row->SubItem(queue_column::kDependency),
                      !row->Tag().empty()});
    }
    QueueArrangement plan(rows);
    plan.Run([&](std::size_t row) {
      Apply(plan, shown);
      on([&] { throw RuntimeError(ErrorNumber::ElementNotFound, rows[row].dependency); });
    });
    on([&] { Apply(plan, shown); });
    on([&] { RefreshQueue(); });
    on([&] { TellMoved(plan); });
  });
}

void BuildQueue::TellMoved(const QueueArrangement& plan) {
  const auto& order = plan.Order();
  const auto moved =
      std::count_if(order.begin(), order.end(), [&](std::size_t row) { return plan.Moved(row); });
  if (order.empty()) return;
  window_.SetStatus(Counted(static_cast<std::size_t>(moved), "row", "rows") +
                    " moved and unchecked");
}

// Brings the list from the order shown to the order of the plan; rows that moved are made anew.
void BuildQueue::Apply(const QueueArrangement& plan, std::vector<std::size_t>& shown) {
  std::unordered_map<std::size_t, std::unique_ptr<ListRow>> byNumber;
  auto number = shown.begin();
  for (auto& row : window_.lvwQueue.TakeRows()) byNumber[*number++] = std::move(row);
  shown.assign(plan.Order().begin(), plan.Order().end());
  ListView::Storage rows;
  for (const std::size_t row : shown) {
    rows.push_back(plan.Moved(row) ? MadeAnew(*byNumber[row]) : std::move(byNumber[row]));
    const std::size_t link = plan.LinkOf(row);
    if (link != QueueArrangement::kNone) rows.back()->SetTag(link == 0 ? "" : std::to_string(link));
  }
  window_.lvwQueue.PutRows(std::move(rows));
}

void BuildQueue::Move(const std::string& procedure, Direction direction) {
  Procedure(report_, procedure).Run([&](Procedure& on) {
    ListView& queue = window_.lvwQueue;
    const ListRow* row = on([&] { return &queue.SelectedRow(); });
    if (row == nullptr) return;
    const std::size_t position = queue.PositionOf(*row);
    if (position == (direction == Direction::Up ? 1 : queue.Count())) return;
    const std::vector<std::string> cells = {row->SubItem(queue_column::kProject),
                                            row->SubItem(queue_column::kDependency),
                                            row->SubItem(queue_column::kCompatibility)};
    const bool checked = row->Checked();
    const std::string key = row->Key();
    on([&] { queue.Remove(*row); });
    ListRow* moved = on([&] {
      return &queue.Add(key, "", Image::VbProject,
                        direction == Direction::Up ? position - 1 : position + 1);
    });
    if (moved == nullptr) return;
    for (std::size_t i = 0; i < cells.size(); ++i) moved->SetSubItem(i + 1, cells[i]);
    moved->SetChecked(checked);
    on([&] { RefreshQueue(); });
    on([&] { queue.Select(moved); });
  });
}

void BuildQueue::mnuQueueMoveUp_Click() {
  Move(": frmBuilder.mnuQueueMoveUp_Click", Direction::Up);
}

void BuildQueue::mnuQueueMoveDown_Click() {
  Move(": frmBuilder.mnuQueueMoveDown_Click", Direction::Down);
}

void BuildQueue::mnuQueueRemove_Click() {
  Procedure(report_, ": frmBuilder.mnuQueueRemove_Click").Run([&](Procedure& on) {
    const Answer answer = on([&] {
      return dialogs_.Show({"Remove item from queue???", Buttons::YesNo, MessageIcon::Question});
    });
    if (answer != Answer::Yes) return;
    on([&] { window_.lvwQueue.Remove(window_.lvwQueue.SelectedRow()); });
    on([&] { RefreshQueue(); });
  });
}

void BuildQueue::mnuQueueEmpty_Click() {
  Procedure(report_, ": frmBuilder.mnuQueueEmpty_Click").Do([&] { window_.lvwQueue.Clear(); });
}

void BuildQueue::MarkAll(bool checked) {
  for (const auto& row : window_.lvwQueue.Rows()) row->SetChecked(checked);
}

void BuildQueue::mnuQueueMarkAll_Click() {
  Procedure(report_, ": frmBuilder.mnuQueueMarkAll_Click").Do([&] { MarkAll(true); });
}

void BuildQueue::mnuQueueUnMarkAll_Click() {
  Procedure(report_, ": frmBuilder.mnuQueueUnMarkAll_Click").Do([&] { MarkAll(false); });
}

}  // namespace gorbex
