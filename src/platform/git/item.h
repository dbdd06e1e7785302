#pragma once

#include <memory>
#include <utility>

#include "platform/git/working_tree.h"
#include "platform/source_control.h"

namespace gorbex {

/// One folder or file of a working tree as a source-control item.
class GitItem : public SourceControlItem {
 public:
  GitItem(std::shared_ptr<GitWorkingTree> tree, GitTree::Entry entry)
      : tree_(std::move(tree)), entry_(std::move(entry)) {}

  [[nodiscard]] std::string LocalSpec() const override;
  [[nodiscard]] SourceItemType Type() const override;
  [[nodiscard]] std::vector<std::unique_ptr<SourceControlItem>> Items() override;
  [[nodiscard]] bool IsDifferent() override;

  /// Whatever the item and the flags, the whole branch is brought up to date: git knows no other
  /// way that keeps the working copy one commit's. Error 5 for any place but the working copy.
  std::string Get(const std::string& localPath, std::uint32_t flags) override;

  /// Labels the whole tip: a tag of git's names no folder.
  void Label(const std::string& label, const std::string& comment) override;

  /// Git does not record check-outs, so the comment is not kept.
  void Checkout(const std::string& comment) override;
  void Checkin(const std::string& comment) override;

 private:
  std::shared_ptr<GitWorkingTree> tree_;
  GitTree::Entry entry_;
};

}  // namespace gorbex
