#pragma once

#include <wx/listctrl.h>

#include <functional>
#include <string>
#include <vector>

#include "core/list_view.h"
#include "ui/column_widths.h"
#include "ui/hover_tip.h"

namespace gorbex::ui {

struct ListColumn {
  std::string heading;
  int width = 0;  ///< its least one as long as there is room, in DIP and for a font of usual size
  bool isNumber = false;
  int worth = 1;         ///< of two columns the one that is worth more gets room first
  bool isWhole = false;  ///< its texts are short and always shown whole
};

/// Draws a list's state: rows are asked for when they are painted, and many changes make one
/// painting.
class StateList : public wxListCtrl {
 public:
  enum class Checks { No, Yes };

  /// Column 0 shows the row's text, the others its sub-items of the same number.
  StateList(wxWindow* parent, const wxString& name, ListView& state,
            const std::vector<ListColumn>& columns, Checks checks = Checks::No);

  /// Tells the column, from 0, whose heading the user clicks.
  void TellHeadings(Signal<std::size_t>& clicked);

  /// Does something whenever the user presses a key in the list.
  void TellKey(int key, const std::function<void()>& act);

  /// Widths in DIP. Widths that were set, here or by the user, are kept when rows change; the
  /// others follow the rows' texts.
  void SetColumnWidths(const std::vector<int>& widths);
  [[nodiscard]] std::vector<int> ColumnWidths() const;

  /// Whether the user or a call set the widths.
  [[nodiscard]] bool HasOwnWidths() const { return hasOwnWidths_; }

  /// Scrolls until the selected row is in sight.
  void ShowSelected();

  /// The height of the headings and of this number of rows, in pixels.
  [[nodiscard]] int HeightOf(int rows) const;

  /// Null when the item shows no row.
  [[nodiscard]] ListRow* RowOf(long item) const;

 protected:
  /// The text of a column beyond the row's own.
  [[nodiscard]] virtual wxString ExtraText(const ListRow& /*row*/, long /*column*/) const {
    return {};
  }

  /// Lines for the tool tip of a row, asked for when the pointer comes to it.
  [[nodiscard]] virtual wxString NoteOf(const ListRow& row) const;

  /// Paints the changes once the program is idle.
  void ShowLater() { isStale_ = true; }

  /// As ShowLater, and fits the columns to the texts again.
  void MeasureLater() { isUnmeasured_ = isStale_ = true; }

 private:
  [[nodiscard]] wxString OnGetItemText(long item, long column) const override;
  [[nodiscard]] wxString WholeText(long item, long column) const;
  [[nodiscard]] int RoomIn(long column) const;
  [[nodiscard]] bool Fits(const wxString& text, long column) const;
  [[nodiscard]] int OnGetItemImage(long item) const override;
  [[nodiscard]] wxItemAttr* OnGetItemAttr(long item) const override;
  [[nodiscard]] bool OnGetItemIsChecked(long item) const override;

  void Follow();
  void Change(const ListRow& row, RowChange change);
  void BindEvents();
  void CatchUp();
  void MarkCurrent();
  void ShowSelection();
  void FitColumns();
  bool SetNewWidths(const std::vector<int>& widths);
  [[nodiscard]] int RoomForColumns() const;
  [[nodiscard]] ColumnNeed NeedOf(long column) const;
  [[nodiscard]] int WidestText(long column) const;
  void OnMotion(wxMouseEvent& event);
  [[nodiscard]] wxString CutOffTexts(long item) const;

  ListView& state_;
  std::vector<ListColumn> columns_;
  Subscriptions subscriptions_;
  mutable wxItemAttr attribute_;
  HoverTip tip_;
  long tipItem_ = -1;   ///< whose tip it is
  int fittedRoom_ = 0;  ///< that the columns share
  bool isStale_ = true;
  bool isUnmeasured_ = true;
  bool hasOwnWidths_ = false;
  bool isShowingSelection_ = false;
};

}  // namespace gorbex::ui
