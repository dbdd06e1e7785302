#include "core/list_view.h"

#include <algorithm>
#include <utility>

#include "platform/runtime_error.h"

namespace gorbex {

ListRow::ListRow(std::string key, std::string text, Image icon)
    : key_(std::move(key)), text_(std::move(text)), icon_(icon) {}

void ListRow::Announce(RowChange change) {
  if (list_ != nullptr) list_->rowChanged.Emit(*this, change);
}

const std::string& ListRow::SubItem(std::size_t column) const {
  static const std::string kEmpty;
  return column >= 1 && column <= subItems_.size() ? subItems_[column - 1] : kEmpty;
}

void ListRow::SetText(std::string text) {
  text_ = std::move(text);
  Announce(RowChange::Text);
}

void ListRow::SetSubItem(std::size_t column, std::string text) {
  if (subItems_.size() < column) subItems_.resize(column);
  subItems_[column - 1] = std::move(text);
  Announce(RowChange::SubItem);
}

void ListRow::SetIcon(Image icon) {
  icon_ = icon;
  Announce(RowChange::Icon);
}

void ListRow::SetTextColour(Colour colour) {
  colour_ = colour;
  Announce(RowChange::Colour);
}

void ListRow::SetChecked(bool checked) {
  checked_ = checked;
  Announce(RowChange::Checked);
}

ListRow& ListView::Add(std::string key, std::string text, Image icon,
                       std::optional<std::size_t> position) {
  if (!key.empty() && Find(key) != nullptr) throw RuntimeError(ErrorNumber::KeyNotUnique, key);
  const std::size_t at = position.value_or(rows_.size() + 1);
  if (at < 1 || at > rows_.size() + 1) throw RuntimeError(ErrorNumber::IndexOutOfBounds);
  auto row = std::make_unique<ListRow>(std::move(key), std::move(text), icon);
  row->list_ = this;
  auto& added = **rows_.insert(rows_.begin() + static_cast<std::ptrdiff_t>(at - 1), std::move(row));
  if (!added.Key().empty()) byKey_.emplace(added.Key(), &added);
  rowChanged.Emit(added, RowChange::Added);
  return added;
}

void ListView::Remove(const ListRow& row) {
  const auto at = static_cast<std::ptrdiff_t>(PositionOf(row) - 1);
  rowChanged.Emit(row, RowChange::Removing);
  if (selected_ == &row) selected_ = nullptr;
  byKey_.erase(row.Key());
  rows_.erase(rows_.begin() + at);
}

void ListView::Clear() {
  selected_ = nullptr;
  byKey_.clear();
  rows_.clear();
  cleared.Emit();
}

ListRow& ListView::At(std::size_t position) const {
  if (position < 1 || position > rows_.size()) throw RuntimeError(ErrorNumber::IndexOutOfBounds);
  return *rows_[position - 1];
}

std::size_t ListView::PositionOf(const ListRow& row) const {
  const auto found = std::ranges::find(rows_, &row, [](const auto& held) { return held.get(); });
  if (found == rows_.end()) throw RuntimeError(ErrorNumber::ElementNotFound, row.Key());
  return static_cast<std::size_t>(found - rows_.begin()) + 1;
}

ListRow* ListView::Find(std::string_view key) const {
  const auto found = byKey_.find(key);
  return found == byKey_.end() ? nullptr : found->second;
}

ListView::Storage ListView::TakeRows() {
  byKey_.clear();
  return std::exchange(rows_, {});
}

void ListView::PutRows(Storage rows) {
  rows_ = std::move(rows);
  byKey_.clear();
  bool selectedStays = false;
  for (const auto& row : rows_) {
    row->list_ = this;
    if (!row->Key().empty()) byKey_.emplace(row->Key(), row.get());
    selectedStays = selectedStays || row.get() == selected_;
  }
  if (!selectedStays) selected_ = nullptr;
  reordered.Emit();
}

ListRow& ListView::SelectedRow() const {
  if (selected_ == nullptr) throw RuntimeError(ErrorNumber::ObjectNotSet);
  return *selected_;
}

void ListView::Select(ListRow* row) {
  selected_ = row;
  selectionChanged.Emit();
}

}  // namespace gorbex
