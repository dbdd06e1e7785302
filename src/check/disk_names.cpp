#include "check/disk_names.h"

#include "core/file_tools.h"
#include "platform/code_page.h"
#include "platform/runtime_error.h"

namespace gorbex {

DiskNames::Names DiskNames::Listed(const std::string& folder) const {
  Names names;
  try {
    for (FolderEntry& entry : files_.List(folder + "\\")) {
      const auto [at, isNew] = names.try_emplace(LowerCase(entry.name), Entry{entry.isFolder, {}});
      if (!isNew) at->second.other = std::move(entry.name);
    }
  } catch (const RuntimeError&) {
    names.clear();  // Find() then looks at each file itself
  }
  return names;
}

const DiskNames::Entry* DiskNames::Find(const std::string& path) {
  const std::string folder = StripPath(path);
  auto key = LowerCase(folder);
  auto found = folders_.find(key);
  if (found == folders_.end()) found = folders_.emplace(std::move(key), Listed(folder)).first;
  Names& names = found->second;
  auto name = LowerCase(GetFileFromPath(path));
  const auto entry = names.find(name);
  if (entry != names.end()) return &entry->second;
  const auto info = files_.Look(path);
  if (!info) return nullptr;
  return &names.emplace(std::move(name), Entry{info->isFolder, {}}).first->second;
}

}  // namespace gorbex
