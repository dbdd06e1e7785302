#include "ui/project_tree.h"

#include <wx/dcclient.h>
#include <wx/renderer.h>
#include <wx/settings.h>

#include <algorithm>
#include <utility>

#include "core/node_key.h"
#include "core/reference_nodes.h"
#include "core/reference_value.h"
#include "ui/cut_text.h"
#include "ui/icons.h"
#include "ui/observe.h"
#include "ui/palette.h"
#include "ui/text_conversion.h"

namespace gorbex::ui {
namespace {

constexpr long kTypingPause = 1000;  // milliseconds
constexpr int kIconGap = 4;
constexpr int kNoteGap = 16;

// The description or file of a reference, which its text has among its numbers.
wxString NoteOf(const TreeNode& node) {
  return IsReferenceNode(node) ? ToWx(std::string(ReferenceTitle(node.Text()))) : wxString();
}

}  // namespace

ProjectTree::ProjectTree(wxWindow* parent, TreeView& state, Gestures gestures)
    : state_(state), gestures_(std::move(gestures)), tip_(*parent) {
  Create(parent, wxID_ANY, wxDefaultPosition, wxDefaultSize, wxBORDER_THEME | wxWANTS_CHARS,
         "tvwProjects");
  SetBackgroundColour(wxSystemSettings::GetColour(wxSYS_COLOUR_LISTBOX));
  // A window without its own font asks the toolkit for one at every row.
  SetFont(GetFont());
  Measure();
  Observe(*this, wxEVT_DPI_CHANGED, [this] { Measure(); });
  Follow();
  NoticeMoves();
  BindMouse();
  BindKeys();
}

void ProjectTree::Follow() {
  subscriptions_.Add(state_.nodeChanged, [this](const TreeNode&, const NodeChange& change) {
    const bool isRows = change == NodeChange::Added || change == NodeChange::RowsAdded ||
                        change == NodeChange::Removing || change == NodeChange::Expanded;
    (isRows ? isStale_ : isFaded_) = true;
    if (change != NodeChange::Removing) return;
    rows_.clear();
    pressed_ = nullptr;
  });
  subscriptions_.Add(state_.cleared, [this] {
    rows_.clear();
    pressed_ = nullptr;
    isStale_ = isUntouched_ = true;
  });
  subscriptions_.Add(state_.selectionChanged, [this] { isUnchosen_ = true; });
  Observe(*this, wxEVT_IDLE, [this] { CatchUp(); });
}

// The visible rows stay visible; until the user moves in the tree, the selected one does.
void ProjectTree::CatchUp() {
  if (isUnchosen_ && state_.Selected() != nullptr) Reveal(*state_.Selected());
  if (isStale_) {
    const auto top = GetVisibleRowsBegin();
    rows_.clear();
    for (const TreeNode* node : state_.Tops()) Add(*node, 0);
    SetItemCount(rows_.size());
    if (top < rows_.size()) ScrollToRow(top);
    tipRow_ = wxNOT_FOUND;
  }
  if (isStale_ || isUnchosen_) {
    const int row = RowOf(state_.Selected());
    if (row != GetSelection()) SetSelection(row);
  }
  if (isStale_ || isFaded_) Refresh();
  isStale_ = isFaded_ = isUnchosen_ = false;
  if (isUntouched_) ScrollToSelected();
}

void ProjectTree::Add(const TreeNode& node, int depth) {
  rows_.push_back({&node, depth});
  if (!node.Expanded()) return;
  for (const TreeNode* child : node.Children()) Add(*child, depth + 1);
}

void ProjectTree::ShowSelected() {
  CatchUp();
  ScrollToSelected();
}

void ProjectTree::ScrollToSelected() {
  const int row = GetSelection();
  if (row == wxNOT_FOUND) return;
  if (GetClientRect().Contains(GetItemRect(static_cast<std::size_t>(row)))) return;
  const int above = GetClientSize().y / rowHeight_ / 2;
  ScrollToRow(static_cast<std::size_t>(std::max(0, row - above)));
}

void ProjectTree::Reveal(const TreeNode& node) {
  for (const TreeNode* above = node.Parent(); above != nullptr; above = above->Parent()) {
    if (!above->Expanded()) state_.Item(above->Key()).SetExpanded(true);
  }
}

int ProjectTree::RowOf(const TreeNode* node) const {
  const auto found = std::ranges::find(rows_, node, &Row::node);
  return found == rows_.end() ? wxNOT_FOUND : static_cast<int>(found - rows_.begin());
}

TreeNode* ProjectTree::NodeOf(int row) const {
  const auto index = static_cast<std::size_t>(row);
  if (row < 0 || index >= rows_.size()) return nullptr;
  return state_.Find(rows_[index].node->Key());
}

wxRect ProjectTree::PlaceOf(const TreeNode& node) const {
  const int row = RowOf(&node);
  return row == wxNOT_FOUND ? wxRect() : GetItemRect(static_cast<std::size_t>(row));
}

// Where the button of a row is; the icons are a level further in.
int ProjectTree::RowLeft(const Row& row) const {
  return FromDIP(kIconGap) + row.depth * (icon_ + FromDIP(2));
}

int ProjectTree::TextLeft(const Row& row) const {
  const int icons = IsReferenceNode(*row.node) ? 2 : 1;
  return RowLeft({row.node, row.depth + 1}) + icons * (icon_ + FromDIP(kIconGap));
}

bool ProjectTree::IsOnButton(const wxPoint& point, int row) const {
  const TreeNode* node = NodeOf(row);
  if (node == nullptr || node->Children().empty()) return false;
  const int left = RowLeft(rows_[static_cast<std::size_t>(row)]);
  return point.x >= left - FromDIP(kIconGap) && point.x < left + icon_ + FromDIP(2);
}

void ProjectTree::Measure() {
  const int size = IconSize(*this);
  icon_ = FromDIP(size);
  images_ = RowIcons(size);
  registered_ = Icon("state-checked", size);
  unregistered_ = Icon("state-unchecked", size);
  rowHeight_ = std::max(GetCharHeight(), icon_) + FromDIP(5);
}

void ProjectTree::OnDrawBackground(wxDC& dc, const wxRect& rect, size_t row) const {
  if (!IsSelected(row)) return;
  const int flags =
      HasFocus() ? int{wxCONTROL_SELECTED} | int{wxCONTROL_FOCUSED} : int{wxCONTROL_SELECTED};
  wxRendererNative::Get().DrawItemSelectionRect(const_cast<ProjectTree*>(this), dc, rect, flags);
}

void ProjectTree::DrawButton(wxDC& dc, const wxRect& rect, const Row& row) const {
  if (row.node->Children().empty()) return;
  const wxRect button(RowLeft(row), rect.y + (rect.height - icon_) / 2, icon_, icon_);
  wxRendererNative::Get().DrawTreeItemButton(const_cast<ProjectTree*>(this), dc, button,
                                             row.node->Expanded() ? int{wxCONTROL_EXPANDED} : 0);
}

void ProjectTree::OnDrawItem(wxDC& dc, const wxRect& rect, size_t index) const {
  if (index >= rows_.size()) return;
  const Row& row = rows_[index];
  DrawButton(dc, rect, row);
  DrawIcons(dc, rect, row);
  dc.SetFont(GetFont());
  const bool isLight = IsSelected(index) && HasFocus();
  dc.SetTextForeground(isLight ? wxSystemSettings::GetColour(wxSYS_COLOUR_HIGHLIGHTTEXT)
                               : TextColour(row.node->TextColour()));
  const int left = TextLeft(row);
  const int top = rect.y + (rect.height - dc.GetCharHeight()) / 2;
  DrawTexts(dc, {left, top, rect.width - left - FromDIP(kIconGap), rect.height}, *row.node);
}

void ProjectTree::DrawIcons(wxDC& dc, const wxRect& rect, const Row& row) const {
  const TreeNode& node = *row.node;
  const int y = rect.y + (rect.height - icon_) / 2;
  int x = TextLeft(row) - icon_ - FromDIP(kIconGap);
  dc.DrawBitmap(images_[static_cast<std::size_t>(node.ImageOf())].GetBitmapFor(this), x, y);
  if (!IsReferenceNode(node)) return;
  x -= icon_ + FromDIP(kIconGap);
  dc.DrawBitmap((node.Checked() ? registered_ : unregistered_).GetBitmapFor(this), x, y);
}

// A reference's description follows its text where there is room.
void ProjectTree::DrawTexts(wxDC& dc, const wxRect& room, const TreeNode& node) const {
  const wxString text = ToWx(node.Text());
  const wxString note = NoteOf(node);
  const std::size_t end = note.empty() ? text.rfind('\\') : text.rfind(note);
  dc.DrawText(CutText(text, end, dc, room.width), room.x, room.y);
  if (note.empty()) return;
  const int noteLeft = dc.GetTextExtent(text).x + FromDIP(kNoteGap);
  if (noteLeft + dc.GetTextExtent(note).x > room.width) return;
  if (dc.GetTextForeground() == TextColour(node.TextColour())) dc.SetTextForeground(HintColour());
  dc.DrawText(note, room.x + noteLeft, room.y);
}

void ProjectTree::Toggle(const TreeNode& node) {
  if (!node.Children().empty()) state_.Item(node.Key()).SetExpanded(!node.Expanded());
}

void ProjectTree::NoticeMoves() {
  const auto touched = [this] { isUntouched_ = false; };
  Observe(*this, wxEVT_LEFT_DOWN, touched);
  Observe(*this, wxEVT_KEY_DOWN, touched);
  Observe(*this, wxEVT_MOUSEWHEEL, touched);
  for (const auto& type : {wxEVT_SCROLLWIN_TOP, wxEVT_SCROLLWIN_BOTTOM, wxEVT_SCROLLWIN_LINEUP,
                           wxEVT_SCROLLWIN_LINEDOWN, wxEVT_SCROLLWIN_PAGEUP,
                           wxEVT_SCROLLWIN_PAGEDOWN, wxEVT_SCROLLWIN_THUMBTRACK}) {
    Observe(*this, type, touched);
  }
}

void ProjectTree::BindMouse() {
  Bind(wxEVT_LEFT_DOWN, &ProjectTree::OnPress, this);
  Bind(wxEVT_LEFT_DCLICK, [this](wxMouseEvent& event) {
    if (const TreeNode* node = NodeOf(VirtualHitTest(event.GetY()))) Toggle(*node);
  });
  Observe(*this, wxEVT_LEFT_UP, [this] { pressed_ = nullptr; });
  Bind(wxEVT_MOTION, &ProjectTree::OnMotion, this);
  Bind(wxEVT_CONTEXT_MENU, [this](wxContextMenuEvent& event) {
    const wxPoint at = event.GetPosition();
    const bool isKey = at == wxDefaultPosition;
    gestures_.menuAsked(isKey ? state_.Selected() : NodeOf(VirtualHitTest(ScreenToClient(at).y)));
  });
}

void ProjectTree::OnPress(wxMouseEvent& event) {
  const wxPoint at = event.GetPosition();
  const int row = VirtualHitTest(at.y);
  TreeNode* node = NodeOf(row);
  SetFocus();
  if (IsOnButton(at, row)) {
    gestures_.pressed(nullptr);
    Toggle(*node);
    return;
  }
  pressed_ = node;
  pressedAt_ = at;
  gestures_.pressed(node);
}

void ProjectTree::OnMotion(wxMouseEvent& event) {
  event.Skip();
  const wxPoint at = event.GetPosition();
  if (pressed_ == nullptr || !event.LeftIsDown()) {
    ShowToolTip(VirtualHitTest(at.y));
    return;
  }
  const wxPoint way = at - pressedAt_;
  constexpr int kStart = 5;
  if (std::abs(way.x) < FromDIP(kStart) && std::abs(way.y) < FromDIP(kStart)) return;
  gestures_.dragged(*std::exchange(pressed_, nullptr));
}

void ProjectTree::ShowToolTip(int row) {
  if (row == tipRow_) return;
  tipRow_ = row;
  const TreeNode* node = NodeOf(row);
  if (node == nullptr) return tip_.Show(*this, {});
  const wxString text = ToWx(node->Text());
  const wxString note = NoteOf(*node);
  if (!note.empty()) return tip_.Show(*this, text + "\n" + note);
  const int left = TextLeft(rows_[static_cast<std::size_t>(row)]);
  const bool fits = left + GetTextExtent(text).x + FromDIP(kIconGap) <= GetClientSize().x;
  tip_.Show(*this, fits ? wxString() : text);
}

void ProjectTree::BindKeys() {
  Bind(wxEVT_KEY_DOWN, &ProjectTree::OnKey, this);
  Bind(wxEVT_CHAR, &ProjectTree::OnChar, this);
  Bind(wxEVT_LISTBOX, [this](wxCommandEvent& event) { Choose(event.GetSelection()); });
  for (const auto& focus : {wxEVT_SET_FOCUS, wxEVT_KILL_FOCUS}) {
    Observe(*this, focus, [this] {
      // Nobody would see where the keyboard is.
      if (HasFocus() && GetSelection() == wxNOT_FOUND) Choose(0);
      Refresh();
    });
  }
}

void ProjectTree::Choose(int row) {
  TreeNode* node = NodeOf(row);
  if (node != nullptr && node != state_.Selected()) gestures_.selected(*node);
}

void ProjectTree::OnKey(wxKeyEvent& event) {
  CatchUp();
  if (event.GetUnicodeKey() == WXK_NONE) typed_.clear();
  const TreeNode* node = NodeOf(GetSelection());
  const bool isPlain = node != nullptr && !event.HasAnyModifiers();
  event.Skip(!isPlain || !StepInto(*node, event.GetKeyCode()));
}

// Left and right open, close and change levels, as in every tree.
bool ProjectTree::StepInto(const TreeNode& node, int key) {
  switch (key) {
    case WXK_RIGHT:
    case WXK_NUMPAD_RIGHT:
      if (node.Expanded() && !node.Children().empty()) {
        Choose(RowOf(node.Children().front()));
      } else {
        Toggle(node);
      }
      return true;
    case WXK_LEFT:
    case WXK_NUMPAD_LEFT:
      if (node.Expanded() && !node.Children().empty()) {
        Toggle(node);
      } else if (node.Parent() != nullptr) {
        Choose(RowOf(node.Parent()));
      }
      return true;
    case WXK_RETURN:
    case WXK_NUMPAD_ENTER:
    case WXK_SPACE:
      Toggle(node);
      return true;
    default:
      return false;
  }
}

// Letters typed in quick succession lead to the next project whose file name begins with them; one
// letter typed again and again steps through all that begin with it.
void ProjectTree::OnChar(wxKeyEvent& event) {
  const wxString letter = wxString(event.GetUnicodeKey()).Lower();
  // The time of typing, not of its coming here: a window may be busy.
  const bool goesOn = !typed_.empty() && event.GetTimestamp() - typedAt_ < kTypingPause;
  const bool isOfName = !letter.empty() && (wxIsalnum(letter[0]) || (goesOn && letter != " "));
  if (event.HasModifiers() || !isOfName || wxIscntrl(letter[0])) {
    event.Skip();
    return;
  }
  typed_ = goesOn && typed_ != letter ? typed_ + letter : letter;
  typedAt_ = event.GetTimestamp();
  GoToTyped();
}

void ProjectTree::GoToTyped() {
  const auto count = rows_.size();
  // A longer beginning may still fit where the shorter one led to.
  const auto from = static_cast<std::size_t>(GetSelection()) + (typed_.length() > 1 ? 0 : 1);
  for (std::size_t step = 0; step < count; ++step) {
    const auto row = (from + step) % count;
    const TreeNode& node = *rows_[row].node;
    if (!node.KeyStartsWith(node_prefix::kProject)) continue;
    if (!ToWx(node.Text()).AfterLast('\\').Lower().StartsWith(typed_)) continue;
    Choose(static_cast<int>(row));
    return;
  }
}

}  // namespace gorbex::ui
