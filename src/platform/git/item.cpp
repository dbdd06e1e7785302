#include "platform/git/item.h"

#include "platform/code_page.h"
#include "platform/runtime_error.h"

namespace gorbex {

std::string GitItem::LocalSpec() const {
  return tree_->LocalPath(entry_.path);
}

SourceItemType GitItem::Type() const {
  return entry_.isFolder ? SourceItemType::Project : SourceItemType::File;
}

std::vector<std::unique_ptr<SourceControlItem>> GitItem::Items() {
  std::vector<std::unique_ptr<SourceControlItem>> items;
  if (!entry_.isFolder) return items;
  for (auto& child : tree_->Children(entry_)) {
    items.push_back(std::make_unique<GitItem>(tree_, std::move(child)));
  }
  return items;
}

bool GitItem::IsDifferent() {
  return tree_->Differs(entry_);
}

std::string GitItem::Get(const std::string& localPath, std::uint32_t /*flags*/) {
  if (!EqualsIgnoringCase(localPath, LocalSpec())) {
    throw RuntimeError(ErrorNumber::InvalidCall, localPath);
  }
  return tree_->Get(entry_);
}

void GitItem::Label(const std::string& label, const std::string& comment) {
  tree_->Label(entry_, label, comment);
}

void GitItem::Checkout(const std::string& /*comment*/) {
  tree_->Checkout(entry_);
}

void GitItem::Checkin(const std::string& comment) {
  tree_->Checkin(entry_, comment);
}

}  // namespace gorbex
