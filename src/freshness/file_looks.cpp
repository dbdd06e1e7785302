#include "freshness/file_looks.h"

#include "platform/runtime_error.h"

namespace gorbex {
namespace {

// Some file systems count their times in steps of two seconds.
constexpr std::uint64_t kLongestStep = 2ULL * 10'000'000;

// A file in the future, of a clock that was set back, never counts as settled.
std::optional<FileStamp> SettledStamp(const FileInfo& info, FileTime now) {
  if (!info.lastWrite || info.lastWrite->ticks + kLongestStep >= now.ticks) return std::nullopt;
  return FileStamp{info.size, info.lastWrite->ticks, info.identity};
}

}  // namespace

void FileLooks::Look(const std::string& path, Entry& entry) const {
  using State = Fingerprint::State;
  const FileTime now = clock_.Now();
  const auto info = files_.Look(path);
  const auto stamp = info && !info->isFolder ? SettledStamp(*info, now) : std::nullopt;
  const bool isSame = stamp && stamp == entry.stamp && entry.state == State::Read;
  if (!isSame) entry.contentsHash = entry.interfaceHash = std::nullopt;
  entry.stamp = stamp;
  if (!info) {
    entry.state = State::Missing;
  } else {
    entry.state = info->isFolder ? State::Unreadable : State::Read;
  }
  entry.round = round_;
}

FileLooks::Entry& FileLooks::Looked(const std::string& path) {
  Entry& entry = entries_[path];
  if (entry.round != round_) Look(path, entry);
  return entry;
}

std::optional<FileStamp> FileLooks::StampOf(const std::string& path) {
  return Looked(path).stamp;
}

void FileLooks::Read(const std::string& path, Entry& entry) const {
  try {
    const std::string bytes = files_.Read(path);
    const auto library = components_.LibraryIn(bytes);
    entry.contentsHash = HashOf(bytes);
    entry.interfaceHash = library ? HashOf(library->bytes) : entry.contentsHash;
  } catch (const RuntimeError&) {
    entry.state = Fingerprint::State::Unreadable;
    entry.stamp.reset();
  }
}

Fingerprint FileLooks::Of(const std::string& path, Covered covered, const Fingerprint& known) {
  Entry& entry = Looked(path);
  if (entry.state != Fingerprint::State::Read) return {entry.state};
  if (entry.stamp && entry.stamp == known.stamp) return known;
  const auto& hash = covered == Covered::Interface ? entry.interfaceHash : entry.contentsHash;
  if (!hash) Read(path, entry);
  if (entry.state != Fingerprint::State::Read || !hash) return {entry.state};
  return {entry.state, *hash, entry.stamp};
}

}  // namespace gorbex
