#pragma once

#include <memory>
#include <string>
#include <string_view>
#include <unordered_map>
#include <vector>

#include "core/appearance.h"
#include "core/signal.h"

namespace gorbex {

class TreeView;

enum class NodeChange { Added, Removing, Text, Image, Tag, Checked, Colour, Expanded };

/// One node of a tree; owned by the tree and known there by its key.
class TreeNode {
 public:
  TreeNode(TreeView& tree, TreeNode* parent, std::string key, std::string text, Image image);

  [[nodiscard]] const std::string& Key() const { return key_; }
  [[nodiscard]] const std::string& Text() const { return text_; }
  [[nodiscard]] const std::string& Tag() const { return tag_; }
  [[nodiscard]] Image ImageOf() const { return image_; }
  [[nodiscard]] Colour TextColour() const { return colour_; }
  [[nodiscard]] bool Checked() const { return checked_; }
  [[nodiscard]] bool Expanded() const { return expanded_; }

  /// Null for a top node.
  [[nodiscard]] TreeNode* Parent() const { return parent_; }
  [[nodiscard]] const std::vector<TreeNode*>& Children() const { return children_; }

  void SetTag(std::string tag);
  void SetImage(Image image);
  void SetTextColour(Colour colour);
  void SetChecked(bool checked);
  void SetExpanded(bool expanded);

 private:
  friend class TreeView;
  void Announce(NodeChange change);

  TreeView& tree_;
  TreeNode* parent_;
  std::vector<TreeNode*> children_;
  std::string key_;
  std::string text_;
  std::string tag_;
  Image image_;
  bool checked_ = false;
  bool expanded_ = false;
  Colour colour_ = Colour::WindowText;
};

/// The state of a tree control. Nodes keep the order in which they were added.
class TreeView {
 public:
  using Storage = std::vector<std::unique_ptr<TreeNode>>;

  /// Adds a node as the last child of the parent, or as a top node when the parent is null. Error
  /// 35602 when the key is taken.
  TreeNode& Add(TreeNode* parent, std::string key, std::string text, Image image);

  /// Removes a node with everything below it. Error 35601 when there is no such key.
  void Remove(const std::string& key);
  void Clear();

  /// Null when there is no such key.
  [[nodiscard]] TreeNode* Find(std::string_view key) const;

  /// Error 35601 when there is no such key.
  [[nodiscard]] TreeNode& Item(std::string_view key) const;

  [[nodiscard]] std::size_t Count() const { return nodes_.size(); }

  /// By 1-based position. Error 35600 outside.
  [[nodiscard]] TreeNode& At(std::size_t position) const;
  [[nodiscard]] const Storage& Nodes() const { return nodes_; }

  /// Null when nothing is selected.
  [[nodiscard]] TreeNode* Selected() const { return selected_; }
  void Select(TreeNode* node);

  Signal<TreeNode, NodeChange> nodeChanged;
  Signal<> cleared;
  Signal<> selectionChanged;

 private:
  Storage nodes_;
  std::unordered_map<std::string_view, TreeNode*> byKey_;
  TreeNode* selected_ = nullptr;
};

}  // namespace gorbex
