#pragma once

#include <cstddef>
#include <cstdint>
#include <memory>
#include <string>
#include <string_view>
#include <unordered_map>
#include <vector>

#include "core/appearance.h"
#include "core/signal.h"

namespace gorbex {

class TreeView;
struct TreeRows;

enum class NodeChange { Added, RowsAdded, Removing, Text, Image, Checked, Colour, Expanded };

/// One node of a tree; owned by the tree and known there by its key.
class TreeNode {
 public:
  TreeNode(TreeView& tree, TreeNode* parent, std::string key, std::string text, Image image);

  /// The row of a 1-based number.
  TreeNode(TreeView& tree, const TreeRows& rows, std::size_t number, std::string text);

  [[nodiscard]] std::string Key() const;
  [[nodiscard]] bool KeyStartsWith(std::string_view prefix) const;
  [[nodiscard]] const std::string& Text() const { return text_; }
  [[nodiscard]] std::string_view Tag() const;
  [[nodiscard]] Image ImageOf() const { return image_; }
  [[nodiscard]] Colour TextColour() const { return colour_; }
  [[nodiscard]] bool Checked() const { return checked_; }
  [[nodiscard]] bool Expanded() const { return expanded_; }

  /// Null for a top node.
  [[nodiscard]] TreeNode* Parent() const { return parent_; }
  [[nodiscard]] const std::vector<TreeNode*>& Children() const;

  void SetText(std::string text);
  void SetImage(Image image);
  void SetTextColour(Colour colour);
  void SetChecked(bool checked);
  void SetExpanded(bool expanded);

 private:
  friend class TreeView;

  /// Members that rows do not have.
  struct Branch {
    std::string key;
    std::vector<TreeNode*> children;
    std::vector<std::unique_ptr<TreeRows>> rows;
  };

  void Announce(NodeChange change);
  [[nodiscard]] bool IsRow() const { return rows_ != nullptr; }
  [[nodiscard]] std::string_view Path() const { return std::string_view(branch_->key).substr(2); }

  TreeView& tree_;
  TreeNode* parent_;
  std::unique_ptr<Branch> branch_;  ///< null for a row
  const TreeRows* rows_ = nullptr;  ///< the rows of which this is one; null for other nodes
  std::string text_;
  std::uint32_t number_ = 0;  ///< of a row
  Colour colour_ = Colour::WindowText;
  Image image_;
  bool checked_ = false;
  bool expanded_ = false;
};

/// Numbered rows below a heading. They are texts until somebody looks at them, since a group of
/// thousands of projects has hundreds of thousands of rows that nobody ever sees.
struct TreeRows {
  /// The tag of a row, by its text.
  using TagOf = std::string_view (*)(std::string_view text);

  TreeNode* heading;
  std::string_view prefix;
  Image image;
  TagOf tagOf;                     ///< null where rows have none
  std::vector<std::string> texts;  ///< empty when the nodes are made
  std::vector<TreeNode> nodes;     ///< by number; a removed one keeps its place

  [[nodiscard]] std::size_t Size() const { return texts.empty() ? nodes.size() : texts.size(); }
};

/// The state of a tree control. Children keep the order in which they were added.
class TreeView {
 public:
  /// Adds a node as the last child of the parent, or as a top node when the parent is null. Error
  /// 35602 when the key is taken.
  TreeNode& Add(TreeNode* parent, std::string key, std::string text, Image image);

  /// Adds rows as the last children of a heading, whose own key is two characters and a full path.
  /// Their keys are the prefix (which has no digit and outlives the tree), the number from 1, and
  /// that path. Error 35602 when the heading has rows with that prefix.
  void AddRows(TreeNode& heading, std::string_view prefix, std::vector<std::string> texts,
               Image image, TreeRows::TagOf tagOf = nullptr);

  /// Removes a node with everything below it. Error 35601 when there is no such key.
  void Remove(const std::string& key);
  void Clear();

  /// Null when there is no such key.
  [[nodiscard]] TreeNode* Find(std::string_view key) const;

  /// Error 35601 when there is no such key.
  [[nodiscard]] TreeNode& Item(std::string_view key) const;

  [[nodiscard]] const std::vector<TreeNode*>& Tops() const { return tops_; }

  /// Null when nothing is selected.
  [[nodiscard]] TreeNode* Selected() const { return selected_; }
  void Select(TreeNode* node);

  Signal<TreeNode, NodeChange> nodeChanged;
  Signal<> cleared;
  Signal<> selectionChanged;

 private:
  friend class TreeNode;

  void MakeNodes(TreeRows& rows);
  [[nodiscard]] TreeNode* FindRow(std::string_view key) const;
  void Forget(const TreeNode& node);
  [[nodiscard]] bool Holds(const TreeNode& above, const TreeNode* node) const;

  std::vector<std::unique_ptr<TreeNode>> nodes_;  ///< all but the rows
  std::vector<TreeNode*> tops_;
  std::unordered_map<std::string_view, TreeNode*> byKey_;
  std::unordered_map<std::string, TreeRows*> rows_;  ///< by prefix and path
  TreeNode* selected_ = nullptr;
};

}  // namespace gorbex
