#include "core/member.h"

#include <utility>

#include "core/file_tools.h"
#include "core/text.h"
#include "platform/runtime_error.h"
#include "platform/windows_path.h"

namespace gorbex {

std::string OwnBinary(const clsMember& project) {
  const std::string& name = project.BuildName;
  // An output folder without a name is the project's own.
  if (name.empty() || name == "\\" + project.EXEName) {
    return JoinPath(StripPath(project.path), project.EXEName);
  }
  const auto built = ParseWindowsPath(name);
  const bool isRelative = built && built->start == ParsedPath::Start::CurrentFolder;
  return isRelative ? JoinPath(StripPath(project.path), name) : name;
}

const clsMember& MemberCollection::Add(clsMember member) {
  if (Contains(member.path)) throw RuntimeError(ErrorNumber::DuplicateKey, member.path);
  auto& record = *members_.emplace_back(std::make_unique<clsMember>(std::move(member)));
  byPath_.emplace(record.path, &record);
  added.Emit(record);
  return record;
}

void MemberCollection::Remove(const std::string& path) {
  const auto found = byPath_.find(path);
  if (found == byPath_.end()) throw RuntimeError(ErrorNumber::InvalidCall, path);
  const clsMember* record = found->second;
  removing.Emit(*record);
  byPath_.erase(found);
  std::erase_if(members_, [&](const auto& held) { return held.get() == record; });
}

void MemberCollection::Clear() {
  byPath_.clear();
  members_.clear();
  cleared.Emit();
}

const clsMember* MemberCollection::Find(const std::string& path) const {
  const auto found = byPath_.find(path);
  return found == byPath_.end() ? nullptr : found->second;
}

const clsMember& MemberCollection::Item(const std::string& path) const {
  const clsMember* record = Find(path);
  if (record == nullptr) throw RuntimeError(ErrorNumber::InvalidCall, path);
  return *record;
}

void MemberCollection::TakeBuildFacts(const clsMember& read) {
  static_cast<void>(Item(read.path));
  clsMember& member = *byPath_.at(read.path);
  member.BinaryCompat = read.BinaryCompat;
  member.Compatibility = read.Compatibility;
  member.Version = read.Version;
}

void MemberCollection::ReplaceInReferences(const std::string& path, const std::string& oldText,
                                           const std::string& newText) {
  static_cast<void>(Item(path));
  clsMember& member = *byPath_.at(path);
  for (auto* values : {&member.Refs, &member.Objects}) {
    for (std::string& value : *values) ReplaceIgnoringCase(value, oldText, newText);
  }
}

}  // namespace gorbex
