#include "freshness/record_file.h"

#include <algorithm>
#include <unordered_set>
#include <utility>

#include "core/file_tools.h"
#include "platform/code_page.h"
#include "platform/runtime_error.h"

namespace gorbex {
namespace {

// Whoever builds into a new folder each time leaves the old ones behind.
constexpr std::size_t kMostPlaces = 8;

constexpr std::size_t kSmall = std::size_t{64} * 1024;

bool LooksSame(const FileInfo& one, const FileInfo& other) {
  return one.size == other.size && one.lastWrite == other.lastWrite &&
         one.identity == other.identity;
}

}  // namespace

void RecordFile::Follow() {
  if (isLoaded_ && !mayBeOld_) return;
  mayBeOld_ = false;
  const auto info = files_.Look(path_);
  const bool isKnown =
      isLoaded_ && info.has_value() == loaded_.has_value() && (!info || LooksSame(*info, *loaded_));
  if (isKnown) return;
  Load();
  loaded_ = info;
  isLoaded_ = true;
}

void RecordFile::Load() {
  text_ = ReadOrEmpty(files_, path_);
  places_.clear();
  shared_.clear();
  inForce_ = sharedBytes_ = 0;
  TakeLines(0);
}

void RecordFile::TakeLines(std::size_t from) {
  while (from < text_.size()) {
    const auto end = text_.find('\n', from);
    if (end == std::string::npos) return;  // a torn line
    if (end > from) TakeLine(from, end - from);
    from = end + 1;
  }
}

void RecordFile::TakeLine(std::size_t start, std::size_t size) {
  const auto line = std::string_view(text_).substr(start, size);
  const auto key = KeyOf(line);
  if (!key) return TakeShared(line);
  auto& places = places_[LowerCase(key->project)];
  std::string output = LowerCase(key->output);
  const auto old = std::ranges::find(places, output, &Place::output);
  if (old != places.end()) {
    Forget(places, old);
  } else if (places.size() == kMostPlaces) {
    Forget(places, places.begin());
  }
  places.push_back({std::move(output), start, size});
  inForce_ += size + 1;
}

void RecordFile::TakeShared(std::string_view line) {
  auto input = SharedInputOf(line);
  if (!input) return;
  sharedBytes_ += line.size() + 1;
  shared_.try_emplace(IdOf(line), std::make_shared<const BuildInput>(std::move(*input)));
}

void RecordFile::Forget(Places& places, Places::iterator place) {
  inForce_ -= place->size + 1;
  places.erase(place);
}

SharedInput RecordFile::SharedWith(LineId id) const {
  const auto found = shared_.find(id);
  return found == shared_.end() ? nullptr : found->second;
}

bool RecordFile::Knows(const std::string& project) {
  Follow();
  const auto found = places_.find(LowerCase(project));
  return found != places_.end() && !found->second.empty();
}

std::optional<BuildRecord> RecordFile::Find(const std::string& project, const std::string& output) {
  Follow();
  const auto found = places_.find(LowerCase(project));
  if (found == places_.end()) return std::nullopt;
  const auto place = std::ranges::find(found->second, LowerCase(output), &Place::output);
  if (place == found->second.end()) return std::nullopt;
  auto record = RecordOf(std::string_view(text_).substr(place->start, place->size),
                         [this](LineId id) { return SharedWith(id); });
  if (!record) Forget(found->second, place);
  return record;
}

// The lines of shared inputs that the file does not have yet, and the record's.
std::string RecordFile::LinesOf(const BuildRecord& record) const {
  std::string lines;
  std::vector<LineId> ids;
  for (const SharedInput& input : record.shared) {
    const std::string line = LineOf(*input);
    ids.push_back(IdOf(line));
    const bool isNew = std::find(ids.begin(), ids.end() - 1, ids.back()) == ids.end() - 1;
    if (isNew && !shared_.contains(ids.back())) lines.append(line).append("\n");
  }
  return lines.append(LineOf(record, ids)).append("\n");
}

// The first line break ends a line that was torn.
void RecordFile::Add(const BuildRecord& record) {
  LookAgain();
  Follow();
  std::string lines = LinesOf(record);
  if (!text_.empty() && !text_.ends_with('\n')) lines.insert(0, "\n");
  files_.Append(path_, lines);
  const auto info = files_.Look(path_);
  const std::size_t before = text_.size();
  if (!info || info->size != before + lines.size()) {
    isLoaded_ = false;  // another program has added lines, too
    return;
  }
  text_ += lines;
  loaded_ = info;
  TakeLines(before);
  CompactWhenLong();
}

// Records bring their shared inputs along, so these grow at the same rate.
void RecordFile::CompactWhenLong() {
  if (text_.size() - sharedBytes_ <= 2 * inForce_ + kSmall) return;
  Places all;
  for (const auto& [project, places] : places_) all.insert(all.end(), places.begin(), places.end());
  std::ranges::sort(all, {}, &Place::start);
  std::string lines;
  std::unordered_set<LineId> written;
  for (const Place& place : all) {
    const auto line = std::string_view(text_).substr(place.start, place.size);
    for (const LineId id : SharedIdsOf(line)) {
      const SharedInput input = SharedWith(id);
      if (input && written.insert(id).second) lines.append(LineOf(*input)).append("\n");
    }
    lines.append(line).append("\n");
  }
  isLoaded_ = false;
  try {
    files_.Write(path_, lines);
  } catch (const RuntimeError&) {
    return;  // the long file is as good
  }
}

}  // namespace gorbex
