#include "check/disk_names.h"

#include "core/file_tools.h"
#include "platform/code_page.h"
#include "platform/runtime_error.h"

namespace gorbex {

DiskNames::Names DiskNames::Listed(const std::string& folder) const {
  Names names;
  try {
    for (FolderEntry& entry : files_.List(folder + "\\")) {
      auto [at, isNew] = names.try_emplace(LowerCase(entry.name));
      if (isNew) {
        at->second.isFolder = entry.isFolder;
        if (entry.isReachable) at->second.name = std::move(entry.name);
      } else {
        at->second.other = std::move(entry.name);
      }
    }
  } catch (const RuntimeError&) {
    names.clear();  // Find() then looks at each file itself
  }
  return names;
}

DiskNames::Names& DiskNames::NamesIn(const std::string& folder) {
  auto key = LowerCase(folder);
  const auto found = folders_.find(key);
  if (found != folders_.end()) return found->second;
  return folders_.emplace(std::move(key), Listed(folder)).first->second;
}

const DiskNames::Entry* DiskNames::Find(const std::string& path) {
  Names& names = NamesIn(StripPath(path));
  auto name = LowerCase(GetFileFromPath(path));
  const auto entry = names.find(name);
  if (entry != names.end()) return &entry->second;
  const auto info = files_.Look(path);
  if (!info) return nullptr;
  return &names.emplace(std::move(name), Entry{info->isFolder, {}, {}}).first->second;
}

}  // namespace gorbex
