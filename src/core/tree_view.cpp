#include "core/tree_view.h"

#include <algorithm>
#include <charconv>
#include <unordered_set>
#include <utility>

#include "core/node_key.h"
#include "core/text.h"
#include "platform/runtime_error.h"

namespace gorbex {

TreeNode::TreeNode(TreeView& tree, TreeNode* parent, std::string key, std::string text, Image image)
    : tree_(tree),
      parent_(parent),
      branch_(std::make_unique<Branch>()),
      text_(std::move(text)),
      image_(image) {
  branch_->key = std::move(key);
}

TreeNode::TreeNode(TreeView& tree, const TreeRows& rows, std::size_t number, std::string text)
    : tree_(tree),
      parent_(rows.heading),
      rows_(&rows),
      text_(std::move(text)),
      number_(static_cast<std::uint32_t>(number)),
      image_(rows.image) {}

std::string TreeNode::Key() const {
  return IsRow() ? ItemKey(rows_->prefix, number_, rows_->heading->Path()) : branch_->key;
}

bool TreeNode::KeyStartsWith(std::string_view prefix) const {
  if (!IsRow()) return branch_->key.starts_with(prefix);
  return prefix.size() <= rows_->prefix.size() ? rows_->prefix.starts_with(prefix)
                                               : Key().starts_with(prefix);
}

std::string_view TreeNode::Tag() const {
  return IsRow() && rows_->tagOf != nullptr ? rows_->tagOf(text_) : std::string_view();
}

const std::vector<TreeNode*>& TreeNode::Children() const {
  static const std::vector<TreeNode*> kNone;
  if (IsRow()) return kNone;
  for (const auto& rows : branch_->rows) tree_.MakeNodes(*rows);
  return branch_->children;
}

void TreeNode::Announce(NodeChange change) {
  tree_.nodeChanged.Emit(*this, change);
}

void TreeNode::SetText(std::string text) {
  text_ = std::move(text);
  Announce(NodeChange::Text);
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
  auto node = std::make_unique<TreeNode>(*this, parent, std::move(key), std::move(text), image);
  auto& added = *nodes_.emplace_back(std::move(node));
  byKey_.emplace(added.branch_->key, &added);
  if (parent != nullptr) static_cast<void>(parent->Children());
  (parent == nullptr ? tops_ : parent->branch_->children).push_back(&added);
  nodeChanged.Emit(added, NodeChange::Added);
  return added;
}

void TreeView::AddRows(TreeNode& heading, std::string_view prefix, std::vector<std::string> texts,
                       Image image, TreeRows::TagOf tagOf) {
  if (texts.empty()) return;
  auto rows =
      std::make_unique<TreeRows>(TreeRows{&heading, prefix, image, tagOf, std::move(texts), {}});
  if (!rows_.emplace(NodeKey(prefix, heading.Path()), rows.get()).second) {
    throw RuntimeError(ErrorNumber::KeyNotUnique, ItemKey(prefix, 1, heading.Path()));
  }
  heading.branch_->rows.push_back(std::move(rows));
  nodeChanged.Emit(heading, NodeChange::RowsAdded);
}

void TreeView::MakeNodes(TreeRows& rows) {
  if (rows.texts.empty()) return;
  rows.nodes.reserve(rows.texts.size());
  auto& children = rows.heading->branch_->children;
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
  std::erase(top.parent_ == nullptr ? tops_ : top.parent_->branch_->children, &top);
  if (top.IsRow()) {
    // Its place stays, so that the numbers of the others do.
    top.parent_ = nullptr;
    return;
  }
  std::vector<TreeNode*> doomed = {&top};
  for (std::size_t i = 0; i < doomed.size(); ++i) {
    for (TreeNode* child : doomed[i]->branch_->children) {
      if (!child->IsRow()) doomed.push_back(child);
    }
  }
  const std::unordered_set<const TreeNode*> lookup(doomed.begin(), doomed.end());
  for (const TreeNode* node : doomed) Forget(*node);
  std::erase_if(nodes_, [&](const auto& node) { return lookup.contains(node.get()); });
}

void TreeView::Forget(const TreeNode& node) {
  byKey_.erase(node.branch_->key);
  for (const auto& rows : node.branch_->rows) rows_.erase(NodeKey(rows->prefix, node.Path()));
}

bool TreeView::Holds(const TreeNode& above, const TreeNode* node) const {
  while (node != nullptr && node != &above) node = node->parent_;
  return node != nullptr;
}

void TreeView::Clear() {
  selected_ = nullptr;
  byKey_.clear();
  rows_.clear();
  tops_.clear();
  nodes_.clear();
  cleared.Emit();
}

TreeNode* TreeView::Find(std::string_view key) const {
  const auto found = byKey_.find(key);
  return found == byKey_.end() ? FindRow(key) : found->second;
}

// The number in the key of a row ends where the path begins: no full path begins with a digit.
TreeNode* TreeView::FindRow(std::string_view key) const {
  const auto* const first = std::find_if(key.begin(), key.end(), IsDigit);
  const auto* const path = std::find_if_not(first, key.end(), IsDigit);
  if (first == path || first > key.begin() + 2) return nullptr;
  const auto found = rows_.find(NodeKey({key.begin(), first}, {path, key.end()}));
  std::size_t number = 0;
  std::from_chars(first, path, number);
  if (found == rows_.end() || number == 0 || number > found->second->Size()) return nullptr;
  TreeRows& rows = *found->second;
  static_cast<void>(rows.heading->Children());
  TreeNode& row = rows.nodes[number - 1];
  return row.parent_ == nullptr ? nullptr : &row;
}

TreeNode& TreeView::Item(std::string_view key) const {
  TreeNode* node = Find(key);
  if (node == nullptr) throw RuntimeError(ErrorNumber::ElementNotFound, key);
  return *node;
}

void TreeView::Select(TreeNode* node) {
  selected_ = node;
  selectionChanged.Emit();
}

}  // namespace gorbex
