#pragma once

#include <memory>
#include <optional>
#include <string>
#include <string_view>
#include <unordered_map>
#include <vector>

#include "core/appearance.h"
#include "core/signal.h"

namespace gorbex {

class ListView;

enum class RowChange { Added, Removing, Text, SubItem, Icon, Checked, Colour, EnsureVisible };

/// One row of a list. An empty key means no key.
class ListRow {
 public:
  ListRow(std::string key, std::string text, Image icon);

  [[nodiscard]] const std::string& Key() const { return key_; }
  [[nodiscard]] const std::string& Text() const { return text_; }
  [[nodiscard]] const std::string& Tag() const { return tag_; }

  /// Lines about the row that a front end shows on request; may be empty.
  [[nodiscard]] const std::string& Note() const { return note_; }

  [[nodiscard]] Image Icon() const { return icon_; }
  [[nodiscard]] Colour TextColour() const { return colour_; }
  [[nodiscard]] bool Checked() const { return checked_; }

  /// The text of a column, counted from 1; empty if none was set.
  [[nodiscard]] const std::string& SubItem(std::size_t column) const;

  void SetText(std::string text);
  void SetSubItem(std::size_t column, std::string text);
  void SetTag(std::string tag) { tag_ = std::move(tag); }
  void SetNote(std::string note) { note_ = std::move(note); }
  void SetIcon(Image icon);
  void SetTextColour(Colour colour);
  void SetChecked(bool checked);

  /// Scrolls the list until the row can be seen.
  void EnsureVisible() { Announce(RowChange::EnsureVisible); }

 private:
  friend class ListView;
  void Announce(RowChange change);

  ListView* list_ = nullptr;  ///< null while the row is in no list
  std::string key_;
  std::string text_;
  std::string tag_;
  std::string note_;
  std::vector<std::string> subItems_;
  Image icon_;
  bool checked_ = false;
  Colour colour_ = Colour::WindowText;
};

/// The state of a list control with check boxes and sub-items.
class ListView {
 public:
  using Storage = std::vector<std::unique_ptr<ListRow>>;

  /// Adds a row at a 1-based position, or at the end. Errors: 35602 the key is taken, 35600 the
  /// position is outside the list.
  ListRow& Add(std::string key, std::string text, Image icon,
               std::optional<std::size_t> position = std::nullopt);
  void Remove(const ListRow& row);
  void Clear();

  [[nodiscard]] std::size_t Count() const { return rows_.size(); }

  /// By 1-based position. Error 35600 outside.
  [[nodiscard]] ListRow& At(std::size_t position) const;

  /// The 1-based position of a row of this list.
  [[nodiscard]] std::size_t PositionOf(const ListRow& row) const;

  /// Null when there is no such key.
  [[nodiscard]] ListRow* Find(std::string_view key) const;
  [[nodiscard]] const Storage& Rows() const { return rows_; }

  /// For a new order of many rows: take all rows, and put them back in the new order, which is
  /// announced as one change. A row that is not put back must live until then; if it was selected,
  /// no row is selected afterwards.
  [[nodiscard]] Storage TakeRows();
  void PutRows(Storage rows);

  [[nodiscard]] ListRow* Selected() const { return selected_; }

  /// Error 91 when no row is selected.
  [[nodiscard]] ListRow& SelectedRow() const;
  void Select(ListRow* row);

  [[nodiscard]] const std::string& Tag() const { return tag_; }
  void SetTag(std::string tag) { tag_ = std::move(tag); }

  /// Paints the list now, even while no events are handled.
  void Refresh() { refreshed.Emit(); }

  Signal<ListRow, RowChange> rowChanged;
  Signal<> cleared;
  Signal<> reordered;
  Signal<> refreshed;
  Signal<> selectionChanged;

 private:
  Storage rows_;
  std::unordered_map<std::string_view, ListRow*> byKey_;
  ListRow* selected_ = nullptr;
  std::string tag_;
};

}  // namespace gorbex
