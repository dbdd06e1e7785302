#include "core/tree_view.h"

#include <algorithm>
#include <charconv>
#include <unordered_set>
#include <utility>

#include "core/node_key.h"
#include "platform/runtime_error.h"

namespace gorbex {
namespace {

bool IsDigit(char letter) {
  return letter >= '0' && letter <= '9';
}

// The number in the key of a row ends where the path begins, so keys are told apart by their parts
// as long as no path begins with a digit and all other keys have ")" in second place.
bool IsApartFromRows(std::string_view key) {
  return key == kRootKey || (key.size() > 2 && key[1] == ')' && !IsDigit(key[2]));
}

std::string GroupKey(std::string_view prefix, std::string_view path) {
  return std::string(prefix).append(path);
}

}  // namespace

TreeNode::TreeNode(TreeView& tree, TreeNode* parent, std::string key, std::string text, Image image)
    : tree_(tree), parent_(parent), key_(std::move(key)), text_(std::move(text)), image_(image) {}

TreeNode::TreeNode(TreeView& tree, const TreeRows& rows, std::size_t number, std::string text)
    : tree_(tree),
      parent_(rows.heading),
      text_(std::move(text)),
      rowPrefix_(rows.prefix),
      number_(static_cast<std::uint32_t>(number)),
      image_(rows.image) {}

std::string TreeNode::Key() const {
  return number_ == 0 ? key_ : ItemKey(rowPrefix_, number_, parent_->PathOf());
}

bool TreeNode::KeyStartsWith(std::string_view prefix) const {
  if (number_ == 0) return key_.starts_with(prefix);
  return prefix.size() <= rowPrefix_.size() ? rowPrefix_.starts_with(prefix)
                                            : Key().starts_with(prefix);
}

const std::vector<TreeNode*>& TreeNode::Children() const {
  if (rows_ == nullptr) return children_;
  for (const auto& rows : *rows_) tree_.MakeNodes(*rows);
  return children_;
}

void TreeNode::Announce(NodeChange change) {
  tree_.nodeChanged.Emit(*this, change);
}

void TreeNode::SetTag(std::string tag) {
  tag_ = std::move(tag);
  Announce(NodeChange::Tag);
}

void TreeNode::SetImage(Image image) {
  image_ = image;
  Announce(NodeChange::Image);
}

void TreeNode::SetTextColour(Colour colour) {
  colour_ = colour;
  Announce(NodeChange::Colour);
}

void TreeNode::SetChecked(bool checked) {
  checked_ = checked;
  Announce(NodeChange::Checked);
}

void TreeNode::SetExpanded(bool expanded) {
  expanded_ = expanded;
  Announce(NodeChange::Expanded);
}

TreeNode& TreeView::Add(TreeNode* parent, std::string key, std::string text, Image image) {
  if (Find(key) != nullptr) throw RuntimeError(ErrorNumber::KeyNotUnique, key);
  mayCollide_ = mayCollide_ || !IsApartFromRows(key);
  auto node = std::make_unique<TreeNode>(*this, parent, std::move(key), std::move(text), image);
  auto& added = *nodes_.emplace_back(std::move(node));
  byKey_.emplace(added.key_, &added);
  if (parent != nullptr) static_cast<void>(parent->Children());
  (parent == nullptr ? tops_ : parent->children_).push_back(&added);
  nodeChanged.Emit(added, NodeChange::Added);
  return added;
}

void TreeView::AddRows(TreeNode& heading, std::string_view prefix, std::vector<std::string> texts,
                       Image image) {
  const std::size_t wanted = texts.size();
  const std::size_t free = FreeNumbers(heading, prefix, wanted);
  texts.resize(free);
  if (free > 0) {
    if (heading.rows_ == nullptr) heading.rows_ = std::make_unique<TreeNode::Rows>();
    auto rows = std::make_unique<TreeRows>(TreeRows{&heading, prefix, image, std::move(texts), {}});
    rows_.emplace(GroupKey(prefix, heading.PathOf()), rows.get());
    heading.rows_->push_back(std::move(rows));
    rowCount_ += free;
    nodeChanged.Emit(heading, NodeChange::RowsAdded);
  }
  if (free < wanted) {
    throw RuntimeError(ErrorNumber::KeyNotUnique, ItemKey(prefix, free + 1, heading.PathOf()));
  }
}

// How many of the numbers from 1 are free.
std::size_t TreeView::FreeNumbers(const TreeNode& heading, std::string_view prefix,
                                  std::size_t count) const {
  if (rows_.contains(GroupKey(prefix, heading.PathOf()))) return 0;
  if (!mayCollide_) return count;
  std::size_t number = 1;
  while (number <= count && Find(ItemKey(prefix, number, heading.PathOf())) == nullptr) ++number;
  return number - 1;
}

void TreeView::MakeNodes(TreeRows& rows) {
  if (rows.texts.empty()) return;
  rows.nodes.reserve(rows.texts.size());
  auto& children = rows.heading->children_;
  children.reserve(children.size() + rows.texts.size());
  for (std::string& text : rows.texts) {
    children.push_back(
        &rows.nodes.emplace_back(*this, rows, rows.nodes.size() + 1, std::move(text)));
  }
  rows.texts = {};
}

void TreeView::Remove(const std::string& key) {
  TreeNode& top = Item(key);
  nodeChanged.Emit(top, NodeChange::Removing);
  if (Holds(top, selected_)) selected_ = nullptr;
  std::erase(top.parent_ == nullptr ? tops_ : top.parent_->children_, &top);
  if (top.number_ != 0) {
    RemoveRow(top);
    return;
  }
  std::vector<TreeNode*> doomed = {&top};
  for (std::size_t i = 0; i < doomed.size(); ++i) {
    for (TreeNode* child : doomed[i]->children_) {
      if (child->number_ == 0) doomed.push_back(child);
    }
  }
  const std::unordered_set<const TreeNode*> lookup(doomed.begin(), doomed.end());
  for (const TreeNode* node : doomed) Forget(*node);
  std::erase_if(nodes_, [&](const auto& node) { return lookup.contains(node.get()); });
}

// Its place stays, so that the numbers of the others do.
void TreeView::RemoveRow(TreeNode& row) {
  row.parent_ = nullptr;
  --rowCount_;
}

void TreeView::Forget(const TreeNode& node) {
  byKey_.erase(node.key_);
  if (node.rows_ == nullptr) return;
  for (const auto& rows : *node.rows_) {
    rows_.erase(GroupKey(rows->prefix, node.PathOf()));
    const auto isThere = [](const TreeNode& row) { return row.parent_ != nullptr; };
    rowCount_ -= rows->texts.size();
    rowCount_ -=
        static_cast<std::size_t>(std::count_if(rows->nodes.begin(), rows->nodes.end(), isThere));
  }
}

bool TreeView::Holds(const TreeNode& above, const TreeNode* node) const {
  while (node != nullptr && node != &above) node = node->parent_;
  return node != nullptr;
}

void TreeView::Clear() {
  selected_ = nullptr;
  byKey_.clear();
  rows_.clear();
  rowCount_ = 0;
  mayCollide_ = false;
  tops_.clear();
  nodes_.clear();
  cleared.Emit();
}

TreeNode* TreeView::Find(std::string_view key) const {
  const auto found = byKey_.find(key);
  return found == byKey_.end() ? FindRow(key) : found->second;
}

// A path may begin with digits itself, so the number may end behind any of them.
TreeNode* TreeView::FindRow(std::string_view key) const {
  constexpr std::size_t kMostDigits = 9;
  const auto first =
      static_cast<std::size_t>(std::find_if(key.begin(), key.end(), IsDigit) - key.begin());
  if (first == key.size() || first > 2 || key[first] == '0') return nullptr;
  for (auto end = first + 1; end <= key.size() && end - first <= kMostDigits; ++end) {
    const auto group = GroupKey(key.substr(0, first), key.substr(end));
    if (TreeNode* row = RowOf(group, key.substr(first, end - first))) return row;
    if (end == key.size() || !IsDigit(key[end])) break;
  }
  return nullptr;
}

TreeNode* TreeView::RowOf(const std::string& group, std::string_view number) const {
  const auto found = rows_.find(group);
  if (found == rows_.end()) return nullptr;
  TreeRows& rows = *found->second;
  std::size_t position = 0;
  std::from_chars(number.data(), number.data() + number.size(), position);
  if (position > rows.Size()) return nullptr;
  static_cast<void>(rows.heading->Children());
  TreeNode& row = rows.nodes[position - 1];
  return row.parent_ == nullptr ? nullptr : &row;
}

TreeNode& TreeView::Item(std::string_view key) const {
  TreeNode* node = Find(key);
  if (node == nullptr) throw RuntimeError(ErrorNumber::ElementNotFound, key);
  return *node;
}

std::vector<TreeNode*> TreeView::Nodes() const {
  std::vector<TreeNode*> nodes;
  nodes.reserve(Count());
  std::vector<TreeNode*> next(tops_.rbegin(), tops_.rend());
  while (!next.empty()) {
    TreeNode* node = next.back();
    next.pop_back();
    nodes.push_back(node);
    const auto& children = node->Children();
    next.insert(next.end(), children.rbegin(), children.rend());
  }
  return nodes;
}

void TreeView::Select(TreeNode* node) {
  selected_ = node;
  selectionChanged.Emit();
}

}  // namespace gorbex
