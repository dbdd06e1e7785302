#include "freshness/record_file.h"

#include <algorithm>
#include <utility>

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

// Another program may have added lines since.
void RecordFile::Follow() {
  const auto info = files_.Look(path_);
  const bool isKnown =
      isLoaded_ && info.has_value() == loaded_.has_value() && (!info || LooksSame(*info, *loaded_));
  if (isKnown) return;
  Load();
  loaded_ = info;
  isLoaded_ = true;
}

void RecordFile::Load() {
  text_.clear();
  places_.clear();
  inForce_ = 0;
  try {
    if (FileExists(files_, path_)) text_ = files_.Read(path_);
  } catch (const RuntimeError&) {
    return;  // what cannot be read was never built
  }
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
  const auto key = KeyOf(std::string_view(text_).substr(start, size));
  if (!key) return;
  auto& places = places_[LowerCase(key->project)];
  std::string output = LowerCase(key->output);
  const auto forget = [&](std::vector<Place>::iterator place) {
    inForce_ -= place->size + 1;
    places.erase(place);
  };
  const auto old = std::find_if(places.begin(), places.end(),
                                [&](const Place& place) { return place.output == output; });
  if (old != places.end()) {
    forget(old);
  } else if (places.size() == kMostPlaces) {
    forget(places.begin());
  }
  places.push_back({std::move(output), start, size});
  inForce_ += size + 1;
}

bool RecordFile::Knows(const std::string& project) {
  Follow();
  return places_.contains(LowerCase(project));
}

std::optional<BuildRecord> RecordFile::Find(const std::string& project, const std::string& output) {
  Follow();
  const auto found = places_.find(LowerCase(project));
  if (found == places_.end()) return std::nullopt;
  const std::string wanted = LowerCase(output);
  const auto place = std::find_if(found->second.begin(), found->second.end(),
                                  [&](const Place& each) { return each.output == wanted; });
  if (place == found->second.end()) return std::nullopt;
  return RecordOf(std::string_view(text_).substr(place->start, place->size));
}

// The first line break ends a line that was torn.
void RecordFile::Add(const std::vector<BuildRecord>& records) {
  Follow();
  std::string lines;
  if (!text_.empty() && !text_.ends_with('\n')) lines = "\n";
  for (const BuildRecord& record : records) lines.append(LineOf(record)).append("\n");
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
  if (text_.size() > 2 * inForce_ + kSmall) Compact();
}

void RecordFile::Compact() {
  std::vector<Place> all;
  for (const auto& [project, places] : places_) all.insert(all.end(), places.begin(), places.end());
  std::sort(all.begin(), all.end(),
            [](const Place& one, const Place& other) { return one.start < other.start; });
  std::string lines;
  for (const Place& place : all) lines.append(text_, place.start, place.size).append("\n");
  isLoaded_ = false;
  try {
    files_.Write(path_, lines);
  } catch (const RuntimeError&) {
    return;  // the long file is as good
  }
}

}  // namespace gorbex
