#include "ui/state_list.h"

#include <wx/dcclient.h>

#include <algorithm>

#include "ui/cut_text.h"
#include "ui/icons.h"
#include "ui/observe.h"
#include "ui/palette.h"
#include "ui/text_conversion.h"

namespace gorbex::ui {
namespace {

constexpr int kCellMargin = 24;
constexpr int kCheckWidth = 24;  // with its margin
constexpr int kRowMargin = 6;
constexpr int kShortText = 50;
constexpr int kHeadingMargin = 14;

}  // namespace

StateList::StateList(wxWindow* parent, const wxString& name, ListView& state,
                     const std::vector<ListColumn>& columns, Checks checks)
    : wxListCtrl(parent, wxID_ANY, wxDefaultPosition, wxDefaultSize,
                 wxLC_REPORT | wxLC_VIRTUAL | wxLC_SINGLE_SEL | wxBORDER_THEME, wxDefaultValidator,
                 name),
      state_(state),
      columns_(columns),
      tip_(*parent) {
  if (checks == Checks::Yes) EnableCheckBoxes();
  // The sizes that it wants for all its columns are not those that it needs.
  SetMinSize(FromDIP(wxSize(80, 60)));
  SetSmallImages(RowIcons(IconSize(*this)));
  for (const auto& column : columns_) {
    AppendColumn(wxString::FromUTF8(column.heading),
                 column.isNumber ? wxLIST_FORMAT_RIGHT : wxLIST_FORMAT_LEFT, FromDIP(column.width));
  }
  Follow();
  BindEvents();
}

void StateList::Follow() {
  subscriptions_.Add(state_.rowChanged,
                     [this](const ListRow& row, RowChange change) { Change(row, change); });
  const auto all = [this] { MeasureLater(); };
  subscriptions_.Add(state_.cleared, all);
  subscriptions_.Add(state_.reordered, all);
  subscriptions_.Add(state_.selectionChanged, [this] { ShowLater(); });
  subscriptions_.Add(state_.refreshed, [this] {
    CatchUp();
    Update();
  });
}

void StateList::BindEvents() {
  Observe(*this, wxEVT_IDLE, [this] { CatchUp(); });
  Bind(wxEVT_LIST_ITEM_SELECTED, [this](wxListEvent& event) {
    if (!isShowingSelection_) state_.Select(RowOf(event.GetIndex()));
  });
  Bind(wxEVT_LIST_ITEM_DESELECTED, [this](wxListEvent& event) {
    const bool isOurs = isShowingSelection_ || RowOf(event.GetIndex()) != state_.Selected();
    if (!isOurs) state_.Select(nullptr);
  });
  Bind(wxEVT_LIST_ITEM_CHECKED, [this](wxListEvent& event) {
    if (ListRow* row = RowOf(event.GetIndex())) row->SetChecked(true);
  });
  Bind(wxEVT_LIST_ITEM_UNCHECKED, [this](wxListEvent& event) {
    if (ListRow* row = RowOf(event.GetIndex())) row->SetChecked(false);
  });
  Observe(*this, wxEVT_LIST_COL_END_DRAG, [this] { hasOwnWidths_ = true; });
  // Where the toolkit draws a list itself, its rows are a separate window.
  std::vector<wxWindow*> windows(GetChildren().begin(), GetChildren().end());
  windows.push_back(this);
  for (wxWindow* window : windows) {
    window->Bind(wxEVT_MOTION, &StateList::OnMotion, this);
    Observe(*window, wxEVT_SIZE, [this] {
      if (RoomForColumns() != fittedRoom_) MeasureLater();
    });
    Observe(*window, wxEVT_SET_FOCUS, [this] { MarkCurrent(); });
  }
}

void StateList::TellHeadings(Signal<std::size_t>& clicked) {
  Bind(wxEVT_LIST_COL_CLICK, [&clicked](wxListEvent& event) {
    if (event.GetColumn() >= 0) clicked.Emit(static_cast<std::size_t>(event.GetColumn()));
  });
}

void StateList::TellKey(int key, const std::function<void()>& act) {
  Bind(wxEVT_LIST_KEY_DOWN, [key, act](wxListEvent& event) {
    if (event.GetKeyCode() == key) act();
    event.Skip();
  });
}

// Without a selection nobody would see where the keyboard is.
void StateList::MarkCurrent() {
  const bool isMarked = GetNextItem(-1, wxLIST_NEXT_ALL, wxLIST_STATE_FOCUSED) >= 0;
  if (!isMarked && GetItemCount() > 0) SetItemState(0, wxLIST_STATE_FOCUSED, wxLIST_STATE_FOCUSED);
}

void StateList::Change(const ListRow& row, RowChange change) {
  if (change == RowChange::EnsureVisible) {
    CatchUp();
    EnsureVisible(static_cast<long>(state_.PositionOf(row)) - 1);
    return;
  }
  isUnmeasured_ = isUnmeasured_ || change == RowChange::Added || change == RowChange::SubItem;
  ShowLater();
}

void StateList::CatchUp() {
  if (!isStale_) return;
  isStale_ = false;
  const auto count = static_cast<long>(state_.Count());
  if (GetItemCount() != count) SetItemCount(count);
  ShowSelection();
  if (isUnmeasured_ && !hasOwnWidths_) FitColumns();
  isUnmeasured_ = false;
  if (count > 0) RefreshItems(GetTopItem(), std::min(GetTopItem() + GetCountPerPage(), count - 1));
}

void StateList::ShowSelected() {
  CatchUp();
  const long selected = GetNextItem(-1, wxLIST_NEXT_ALL, wxLIST_STATE_SELECTED);
  if (selected >= 0) EnsureVisible(selected);
}

int StateList::HeightOf(int rows) const {
  wxRect row;
  const bool isKnown = GetItemCount() > 0 && GetItemRect(GetTopItem(), row);
  const int height = isKnown ? row.height : GetCharHeight() + FromDIP(kRowMargin);
  return GetCharHeight() + FromDIP(kHeadingMargin) + rows * height;
}

void StateList::ShowSelection() {
  const ListRow* selected = state_.Selected();
  const long shown = GetNextItem(-1, wxLIST_NEXT_ALL, wxLIST_STATE_SELECTED);
  const long wanted =
      selected == nullptr ? -1 : static_cast<long>(state_.PositionOf(*selected)) - 1;
  if (shown == wanted) return;
  isShowingSelection_ = true;
  if (shown >= 0) SetItemState(shown, 0, wxLIST_STATE_SELECTED);
  if (wanted >= 0) {
    constexpr long kChosen = wxLIST_STATE_SELECTED | wxLIST_STATE_FOCUSED;
    SetItemState(wanted, kChosen, kChosen);
    EnsureVisible(wanted);
  }
  isShowingSelection_ = false;
}

ListRow* StateList::RowOf(long item) const {
  const auto index = static_cast<std::size_t>(item);
  return item >= 0 && index < state_.Count() ? state_.Rows()[index].get() : nullptr;
}

// A text is cut in its middle, and a path so that the name at its end stays in sight.
wxString StateList::OnGetItemText(long item, long column) const {
  const wxString text = WholeText(item, column);
  if (column == 0 || Fits(text, column)) return text;
  wxClientDC dc(const_cast<StateList*>(this));
  dc.SetFont(GetFont());
  return CutPath(text, dc, RoomIn(column));
}

int StateList::RoomIn(long column) const {
  return GetColumnWidth(static_cast<int>(column)) - FromDIP(kCellMargin) / 2;
}

bool StateList::Fits(const wxString& text, long column) const {
  return GetTextExtent(text).x <= RoomIn(column);
}

wxString StateList::WholeText(long item, long column) const {
  const ListRow* row = RowOf(item);
  if (row == nullptr) return {};
  if (column == 0) return ToWx(row->Text());
  const auto& text = row->SubItem(static_cast<std::size_t>(column));
  return text.empty() ? ExtraText(*row, column) : ToWx(text);
}

int StateList::OnGetItemImage(long item) const {
  const ListRow* row = RowOf(item);
  return row == nullptr ? -1 : static_cast<int>(row->Icon());
}

wxItemAttr* StateList::OnGetItemAttr(long item) const {
  const ListRow* row = RowOf(item);
  if (row == nullptr || row->TextColour() == Colour::WindowText) return nullptr;
  attribute_.SetTextColour(TextColour(row->TextColour()));
  return &attribute_;
}

bool StateList::OnGetItemIsChecked(long item) const {
  const ListRow* row = RowOf(item);
  return row != nullptr && row->Checked();
}

void StateList::SetColumnWidths(const std::vector<int>& widths) {
  const auto count = std::min(widths.size(), columns_.size());
  for (std::size_t i = 0; i < count; ++i) {
    SetColumnWidth(static_cast<int>(i), FromDIP(std::max(widths[i], 16)));
  }
  hasOwnWidths_ = true;
}

std::vector<int> StateList::ColumnWidths() const {
  std::vector<int> widths;
  widths.reserve(columns_.size());
  for (int i = 0; i < GetColumnCount(); ++i) widths.push_back(ToDIP(GetColumnWidth(i)));
  return widths;
}

// A list that the toolkit draws itself is blank for a moment after each width that is set.
bool StateList::SetNewWidths(const std::vector<int>& widths) {
  bool isChanged = false;
  for (int i = 0; i < static_cast<int>(widths.size()); ++i) {
    const int width = widths[static_cast<std::size_t>(i)];
    if (GetColumnWidth(i) == width) continue;
    SetColumnWidth(i, width);
    isChanged = true;
  }
  return isChanged;
}

void StateList::FitColumns() {
  std::vector<ColumnNeed> needs;
  needs.reserve(columns_.size());
  for (long column = 0; column < GetColumnCount(); ++column) needs.push_back(NeedOf(column));
  fittedRoom_ = RoomForColumns();
  if (!SetNewWidths(ColumnWidthsFor(fittedRoom_, needs))) return;
  // The headings do not follow by themselves.
  for (wxWindow* child : GetChildren()) child->Refresh();
}

// Where the toolkit draws a list itself, the scroll bar is beside the rows and inside the list.
int StateList::RoomForColumns() const {
  int room = GetClientSize().x;
  for (const wxWindow* child : GetChildren()) room = std::min(room, child->GetClientSize().x);
  return room;
}

ColumnNeed StateList::NeedOf(long column) const {
  const auto& designed = columns_[static_cast<std::size_t>(column)];
  const int icon = IconSize(*this);
  const int margin = FromDIP(kCellMargin);
  const int heading = GetTextExtent(wxString::FromUTF8(designed.heading)).x + margin;
  int icons = 0;
  if (column == 0) icons = FromDIP(icon) + (HasCheckBoxes() ? FromDIP(kCheckWidth) : 0);
  ColumnNeed need;
  const int text = WidestText(column);
  need.wanted = std::max(heading, text + margin + icons);
  need.least = std::min(need.wanted, std::max(heading, FromDIP(designed.width * icon / 16)));
  // The first column tells the rows apart, and of a short text nothing can be left out.
  const bool isShort = designed.isWhole || text + margin / 2 <= FromDIP(kShortText * icon / 16);
  need.bare = std::min(need.least, isShort ? text + margin / 2 : margin);
  if (column == 0) need.bare = need.least;
  need.worth = designed.worth;
  need.grows = !designed.isNumber && column > 0;
  return need;
}

// Of many texts only the longest are measured.
int StateList::WidestText(long column) const {
  constexpr std::size_t kMeasured = 5;
  std::vector<wxString> texts;
  for (long item = 0; item < static_cast<long>(state_.Count()); ++item) {
    texts.push_back(WholeText(item, column));
  }
  const auto measured = texts.begin() + static_cast<long>(std::min(kMeasured, texts.size()));
  std::ranges::partial_sort(texts, measured, std::greater(), &wxString::length);
  int width = 0;
  for (auto text = texts.begin(); text != measured; ++text) {
    width = std::max(width, GetTextExtent(*text).x);
  }
  return width;
}

// Cut-off texts are shown whole while the pointer rests on their row.
void StateList::OnMotion(wxMouseEvent& event) {
  event.Skip();
  auto* over = dynamic_cast<wxWindow*>(event.GetEventObject());
  if (over == nullptr) return;
  // Where the rows are a separate window below the headings, they are counted from its upper edge.
  const bool isOverRows = over == this || over->GetPosition().y > 0;
  int flags = 0;
  const long item = isOverRows ? HitTest(event.GetPosition(), flags) : wxNOT_FOUND;
  if (item == tipItem_) return;
  tipItem_ = item;
  tip_.Show(*over, CutOffTexts(item));
}

wxString StateList::NoteOf(const ListRow& row) const {
  return ToWx(row.Note());
}

wxString StateList::CutOffTexts(long item) const {
  wxString tip;
  if (RowOf(item) == nullptr) return tip;
  for (int column = 1; column < GetColumnCount(); ++column) {
    const wxString text = WholeText(item, column);
    if (Fits(text, column)) continue;
    if (!tip.empty()) tip += "\n";
    tip += wxString::FromUTF8(columns_[static_cast<std::size_t>(column)].heading) + ": " + text;
  }
  const wxString note = NoteOf(*RowOf(item));
  if (!tip.empty() && !note.empty()) tip += "\n";
  return tip + note;
}

}  // namespace gorbex::ui
