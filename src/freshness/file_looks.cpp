#include "freshness/file_looks.h"

#include "platform/runtime_error.h"

namespace gorbex {
namespace {

using State = Fingerprint::State;

// Some file systems count their times in steps of two seconds.
constexpr std::uint64_t kLongestStep = 2ULL * 10'000'000;

// A file in the future, of a clock that was set back, never counts as settled.
std::optional<FileStamp> SettledStamp(const FileInfo& info, FileTime now) {
  if (!info.lastWrite || info.lastWrite->ticks + kLongestStep >= now.ticks) return std::nullopt;
  return FileStamp{info.size, info.lastWrite->ticks, info.identity};
}

// `now` is from before the look.
FileLook LookOf(const std::optional<FileInfo>& info, FileTime now) {
  if (!info) return {State::Missing};
  if (info->isFolder) return {State::Unreadable};
  return {State::Read, SettledStamp(*info, now)};
}

}  // namespace

FileLooks::Entry& FileLooks::Looked(const std::string& path) {
  Entry& entry = entries_[path];
  if (entry.round == round_) return entry;
  const FileTime now = clock_.Now();
  const FileLook look = LookOf(files_.Look(path), now);
  const bool isSame =
      look.stamp && look.stamp == entry.look.stamp && entry.look.state == State::Read;
  if (!isSame) entry.contentsHash = entry.interfaceHash = std::nullopt;
  entry.look = look;
  entry.round = round_;
  return entry;
}

void FileLooks::Read(const std::string& path, Entry& entry) const {
  try {
    const std::string bytes = files_.Read(path);
    const auto library = components_.LibraryIn(bytes);
    entry.contentsHash = HashOf(bytes);
    entry.interfaceHash = library ? HashOf(library->bytes) : entry.contentsHash;
  } catch (const RuntimeError&) {
    entry.look = {State::Unreadable};
  }
}

Fingerprint FileLooks::Of(const std::string& path, Covered covered, const Fingerprint& known) {
  Entry& entry = Looked(path);
  if (entry.look.state != State::Read) return {entry.look.state};
  if (entry.look.stamp && entry.look.stamp == known.stamp) return known;
  const auto& hash = covered == Covered::Interface ? entry.interfaceHash : entry.contentsHash;
  if (!hash) Read(path, entry);
  if (entry.look.state != State::Read || !hash) return {entry.look.state};
  return {State::Read, *hash, entry.look.stamp};
}

std::vector<FileLook> FileLooks::LookIn(const std::string& folder,
                                        const std::vector<std::string_view>& names) const {
  const FileTime now = clock_.Now();
  std::vector<FileLook> looks;
  looks.reserve(names.size());
  for (const auto& info : files_.LookIn(folder, names)) looks.push_back(LookOf(info, now));
  return looks;
}

Fingerprint FileLooks::ContentsOf(const std::string& path, const FileLook& look,
                                  const Fingerprint& known) const {
  if (look.state != State::Read) return {look.state};
  if (look.stamp && look.stamp == known.stamp) return known;
  try {
    return {State::Read, HashOf(files_.Read(path)), look.stamp};
  } catch (const RuntimeError&) {
    return {State::Unreadable};
  }
}

}  // namespace gorbex
