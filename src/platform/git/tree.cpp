#include "platform/git/tree.h"

#include <algorithm>

#include "platform/code_page.h"
#include "platform/git/runner.h"
#include "platform/git/spec.h"
#include "platform/plain_text.h"

namespace gorbex {
namespace {

bool IsItemPath(std::string_view path) {
  const auto names = Split(path, '/');
  return std::all_of(names.begin(), names.end(), IsItemName);
}

}  // namespace

GitTree::GitTree(std::string_view listing) {
  // "MODE TYPE HASH<tab>PATH"; a commit means another repository.
  for (const auto record : Records(listing)) {
    const auto tab = record.find('\t');
    if (tab == std::string_view::npos) continue;
    const auto path = FromUtf8(record.substr(tab + 1));
    if (!path || !IsItemPath(*path)) continue;
    const auto start = record.substr(0, tab);
    if (start.find(" commit ") != std::string_view::npos) {
      submodules_.push_back(*path);
      continue;
    }
    isFolder_[*path] = start.find(" tree ") != std::string_view::npos;
    byLowerCase_.emplace(LowerCase(*path), *path);
  }
}

std::optional<GitTree::Entry> GitTree::Find(const std::string& path) const {
  if (path.empty()) return Entry{{}, true};
  auto found = isFolder_.find(path);
  if (found == isFolder_.end()) {
    const auto similar = byLowerCase_.find(LowerCase(path));
    if (similar == byLowerCase_.end()) return std::nullopt;
    found = isFolder_.find(similar->second);
  }
  return Entry{found->first, found->second};
}

std::string GitTree::SubmoduleOf(const std::string& path) const {
  const auto holds = [wanted = LowerCase(path) + "/"](const std::string& submodule) {
    return wanted.starts_with(LowerCase(submodule) + "/");
  };
  const auto found = std::find_if(submodules_.begin(), submodules_.end(), holds);
  return found == submodules_.end() ? std::string() : *found;
}

std::vector<GitTree::Entry> GitTree::Children(const std::string& folder) const {
  const auto start = folder.empty() ? folder : folder + "/";
  std::vector<Entry> children;
  for (auto entry = isFolder_.lower_bound(start); entry != isFolder_.end(); ++entry) {
    const auto& [path, isFolder] = *entry;
    if (!path.starts_with(start)) break;
    if (path.find('/', start.size()) == std::string::npos) children.push_back({path, isFolder});
  }
  return children;
}

}  // namespace gorbex
