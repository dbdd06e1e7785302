#include "core/tree_view.h"

#include <algorithm>
#include <unordered_set>
#include <utility>

#include "platform/runtime_error.h"

namespace gorbex {

TreeNode::TreeNode(TreeView& tree, TreeNode* parent, std::string key, std::string text, Image image)
    : tree_(tree), parent_(parent), key_(std::move(key)), text_(std::move(text)), image_(image) {}

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
  auto node = std::make_unique<TreeNode>(*this, parent, std::move(key), std::move(text), image);
  auto& added = *nodes_.emplace_back(std::move(node));
  byKey_.emplace(added.Key(), &added);
  if (parent != nullptr) parent->children_.push_back(&added);
  nodeChanged.Emit(added, NodeChange::Added);
  return added;
}

void TreeView::Remove(const std::string& key) {
  TreeNode& top = Item(key);
  nodeChanged.Emit(top, NodeChange::Removing);
  if (top.parent_ != nullptr) std::erase(top.parent_->children_, &top);
  std::vector<TreeNode*> doomed = {&top};
  for (std::size_t i = 0; i < doomed.size(); ++i) {
    const auto& children = doomed[i]->Children();
    doomed.insert(doomed.end(), children.begin(), children.end());
  }
  const std::unordered_set<const TreeNode*> lookup(doomed.begin(), doomed.end());
  if (lookup.contains(selected_)) selected_ = nullptr;
  for (const TreeNode* node : doomed) byKey_.erase(node->Key());
  std::erase_if(nodes_, [&](const auto& node) { return lookup.contains(node.get()); });
}

void TreeView::Clear() {
  selected_ = nullptr;
  byKey_.clear();
  nodes_.clear();
  cleared.Emit();
}

TreeNode* TreeView::Find(std::string_view key) const {
  const auto found = byKey_.find(key);
  return found == byKey_.end() ? nullptr : found->second;
}

TreeNode& TreeView::Item(std::string_view key) const {
  TreeNode* node = Find(key);
  if (node == nullptr) throw RuntimeError(ErrorNumber::ElementNotFound, key);
  return *node;
}

TreeNode& TreeView::At(std::size_t position) const {
  if (position < 1 || position > nodes_.size()) throw RuntimeError(ErrorNumber::IndexOutOfBounds);
  return *nodes_[position - 1];
}

void TreeView::Select(TreeNode* node) {
  selected_ = node;
  selectionChanged.Emit();
}

}  // namespace gorbex
