#include "ui/project_tree.h"

#include <wx/dcclient.h>
#include <wx/renderer.h>
#include <wx/settings.h>

#include <algorithm>
#include <utility>

#include "core/node_key.h"
#include "core/reference_nodes.h"
#include "ui/icons.h"
#include "ui/palette.h"
#include "ui/text_conversion.h"

namespace gorbex::ui {
namespace {

constexpr long kTypingPause = 1000;  // milliseconds
constexpr int kIcon = 16;
constexpr int kIconGap = 4;
constexpr int kIndent = 18;

}  // namespace

ProjectTree::ProjectTree(wxWindow* parent, TreeView& state, Gestures gestures)
    : state_(state),
      gestures_(std::move(gestures)),
      images_(RowIcons()),
      registered_(Icon("state-checked")),
      unregistered_(Icon("state-unchecked")) {
  Create(parent, wxID_ANY, wxDefaultPosition, wxDefaultSize, wxBORDER_THEME | wxWANTS_CHARS,
         "tvwProjects");
  SetBackgroundColour(wxSystemSettings::GetColour(wxSYS_COLOUR_LISTBOX));
  // A window without its own font asks the toolkit for one at every row.
  SetFont(GetFont());
  MeasureRow();
  Bind(wxEVT_DPI_CHANGED, [this](wxDPIChangedEvent& event) {
    MeasureRow();
    event.Skip();
  });
  Follow();
  BindMouse();
  BindKeys();
}

void ProjectTree::Follow() {
  subscriptions_.push_back(
      state_.nodeChanged.Connect([this](const TreeNode&, const NodeChange& change) {
        const bool isRows = change == NodeChange::Added || change == NodeChange::RowsAdded ||
                            change == NodeChange::Removing || change == NodeChange::Expanded;
        (isRows ? isStale_ : isFaded_) = true;
        if (change != NodeChange::Removing) return;
        rows_.clear();
        pressed_ = nullptr;
      }));
  subscriptions_.push_back(state_.cleared.Connect([this] {
    rows_.clear();
    pressed_ = nullptr;
    isStale_ = true;
  }));
  subscriptions_.push_back(state_.selectionChanged.Connect([this] { isUnchosen_ = true; }));
  Bind(wxEVT_IDLE, [this](wxIdleEvent& event) {
    CatchUp();
    event.Skip();
  });
}

// The visible rows stay visible.
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
  if (isStale_ || isUnchosen_) ShowSelection();
  if (isStale_ || isFaded_) Refresh();
  isStale_ = isFaded_ = isUnchosen_ = false;
}

void ProjectTree::Add(const TreeNode& node, int depth) {
  rows_.push_back({&node, depth});
  if (!node.Expanded()) return;
  for (const TreeNode* child : node.Children()) Add(*child, depth + 1);
}

void ProjectTree::ShowSelection() {
  const int row = RowOf(state_.Selected());
  if (row == GetSelection()) return;
  SetSelection(row);
}

void ProjectTree::Reveal(const TreeNode& node) {
  for (const TreeNode* above = node.Parent(); above != nullptr; above = above->Parent()) {
    if (!above->Expanded()) state_.Item(above->Key()).SetExpanded(true);
  }
}

int ProjectTree::RowOf(const TreeNode* node) const {
  const auto found =
      std::find_if(rows_.begin(), rows_.end(), [&](const Row& row) { return row.node == node; });
  return found == rows_.end() ? wxNOT_FOUND : static_cast<int>(found - rows_.begin());
}

TreeNode* ProjectTree::NodeOf(int row) const {
  const auto index = static_cast<std::size_t>(row);
  if (row < 0 || index >= rows_.size()) return nullptr;
  return state_.Find(rows_[index].node->Key());
}

int ProjectTree::RowAt(const wxPoint& point) const {
  return VirtualHitTest(point.y);
}

wxRect ProjectTree::PlaceOf(const TreeNode& node) const {
  const int row = RowOf(&node);
  return row == wxNOT_FOUND ? wxRect() : GetItemRect(static_cast<std::size_t>(row));
}

int ProjectTree::TextLeft(const Row& row) const {
  const int icons = IsReferenceNode(*row.node) ? 2 : 1;
  return FromDIP(kIconGap + row.depth * kIndent + kIndent + icons * (kIcon + kIconGap));
}

bool ProjectTree::IsOnButton(const wxPoint& point, int row) const {
  const TreeNode* node = NodeOf(row);
  if (node == nullptr || node->Children().empty()) return false;
  const int left = FromDIP(kIconGap + rows_[static_cast<std::size_t>(row)].depth * kIndent);
  return point.x >= left - FromDIP(kIconGap) && point.x < left + FromDIP(kIndent);
}

void ProjectTree::MeasureRow() {
  rowHeight_ = std::max(GetCharHeight(), FromDIP(kIcon)) + FromDIP(5);
}

void ProjectTree::OnDrawBackground(wxDC& dc, const wxRect& rect, size_t row) const {
  if (!IsSelected(row)) return;
  const int flags =
      HasFocus() ? int{wxCONTROL_SELECTED} | int{wxCONTROL_FOCUSED} : int{wxCONTROL_SELECTED};
  wxRendererNative::Get().DrawItemSelectionRect(const_cast<ProjectTree*>(this), dc, rect, flags);
}

void ProjectTree::DrawButton(wxDC& dc, const wxRect& rect, const Row& row) const {
  if (row.node->Children().empty()) return;
  const int size = FromDIP(kIcon);
  const wxRect button(FromDIP(kIconGap + row.depth * kIndent), rect.y + (rect.height - size) / 2,
                      size, size);
  wxRendererNative::Get().DrawTreeItemButton(const_cast<ProjectTree*>(this), dc, button,
                                             row.node->Expanded() ? int{wxCONTROL_EXPANDED} : 0);
}

void ProjectTree::OnDrawItem(wxDC& dc, const wxRect& rect, size_t index) const {
  if (index >= rows_.size()) return;
  const Row& row = rows_[index];
  const TreeNode& node = *row.node;
  DrawButton(dc, rect, row);
  const int y = rect.y + (rect.height - FromDIP(kIcon)) / 2;
  int x = TextLeft(row) - FromDIP(kIcon + kIconGap);
  dc.DrawBitmap(images_[static_cast<std::size_t>(node.ImageOf())].GetBitmapFor(this), x, y);
  if (IsReferenceNode(node)) {
    x -= FromDIP(kIcon + kIconGap);
    dc.DrawBitmap((node.Checked() ? registered_ : unregistered_).GetBitmapFor(this), x, y);
  }
  dc.SetFont(GetFont());
  dc.SetTextForeground(IsSelected(index) ? wxSystemSettings::GetColour(wxSYS_COLOUR_HIGHLIGHTTEXT)
                                         : TextColour(node.TextColour()));
  const int left = TextLeft(row);
  const wxString text = wxControl::Ellipsize(ToWx(node.Text()), dc, wxELLIPSIZE_MIDDLE,
                                             rect.width - left - FromDIP(kIconGap));
  dc.DrawText(text, left, rect.y + (rect.height - dc.GetCharHeight()) / 2);
}

void ProjectTree::Toggle(const TreeNode& node) {
  if (!node.Children().empty()) state_.Item(node.Key()).SetExpanded(!node.Expanded());
}

void ProjectTree::BindMouse() {
  Bind(wxEVT_LEFT_DOWN, &ProjectTree::OnPress, this);
  Bind(wxEVT_LEFT_DCLICK, [this](wxMouseEvent& event) {
    const int row = RowAt(event.GetPosition());
    if (const TreeNode* node = NodeOf(row)) Toggle(*node);
  });
  Bind(wxEVT_LEFT_UP, [this](wxMouseEvent& event) {
    pressed_ = nullptr;
    event.Skip();
  });
  Bind(wxEVT_MOTION, &ProjectTree::OnMotion, this);
  Bind(wxEVT_CONTEXT_MENU, [this](wxContextMenuEvent& event) {
    const wxPoint at = event.GetPosition();
    const bool isKey = at == wxDefaultPosition;
    gestures_.menuAsked(isKey ? state_.Selected() : NodeOf(RowAt(ScreenToClient(at))));
  });
}

void ProjectTree::OnPress(wxMouseEvent& event) {
  const wxPoint at = event.GetPosition();
  const int row = RowAt(at);
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
    ShowToolTip(RowAt(at));
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
  const wxString text = node == nullptr ? wxString() : ToWx(node->Text());
  const bool fits = node == nullptr || TextLeft(rows_[static_cast<std::size_t>(row)]) +
                                               GetTextExtent(text).x + FromDIP(kIconGap) <=
                                           GetClientSize().x;
  if (fits) {
    UnsetToolTip();
  } else {
    SetToolTip(text);
  }
}

void ProjectTree::BindKeys() {
  Bind(wxEVT_KEY_DOWN, &ProjectTree::OnKey, this);
  Bind(wxEVT_CHAR, &ProjectTree::OnChar, this);
  Bind(wxEVT_LISTBOX, [this](wxCommandEvent& event) { Choose(event.GetSelection()); });
  const auto redraw = [this](wxFocusEvent& event) {
    Refresh();
    event.Skip();
  };
  Bind(wxEVT_SET_FOCUS, redraw);
  Bind(wxEVT_KILL_FOCUS, redraw);
}

void ProjectTree::Choose(int row) {
  TreeNode* node = NodeOf(row);
  if (node != nullptr && node != state_.Selected()) gestures_.selected(*node);
}

void ProjectTree::OnKey(wxKeyEvent& event) {
  CatchUp();
  if (event.GetUnicodeKey() == WXK_NONE) typed_.clear();
  const int row = GetSelection();
  const bool isPlain = !event.HasAnyModifiers();
  if (isPlain && row >= 0 && static_cast<std::size_t>(row) < rows_.size() &&
      StepInto(rows_[static_cast<std::size_t>(row)], event.GetKeyCode())) {
    return;
  }
  event.Skip();
}

// Left and right open, close and change levels, as in every tree.
bool ProjectTree::StepInto(const Row& row, int key) {
  const TreeNode& node = *row.node;
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
