#include "build/replaced_values.h"

#include <algorithm>
#include <string_view>

#include "core/file_tools.h"
#include "core/text.h"
#include "platform/code_page.h"

namespace gorbex {
namespace {

constexpr std::string_view kFile = "gorbexbuilder.replaced";

// Each line ends with it: a line that was torn is none.
constexpr std::string_view kEnd = "end";

std::string Line(const std::string& projectFile, const ReplacedValue& value) {
  std::string line = value.key;
  for (const std::string& field : {std::to_string(value.before), std::to_string(value.during),
                                   projectFile, std::string(kEnd)}) {
    line.append("\t").append(field);
  }
  return line.append(kLineBreak);
}

std::optional<std::int32_t> Number(std::string_view text) {
  try {
    return TextToLong(text);
  } catch (const RuntimeError&) {
    return std::nullopt;
  }
}

}  // namespace

ReplacedValues::ReplacedValues(FileSystem& files, ActivityLog& log,
                               const std::string& programFolder)
    : files_(files), log_(log), file_(JoinPath(programFolder, kFile)) {}

bool ReplacedValues::Any() const {
  return FileExists(files_, file_);
}

ReplacedValues::Entries ReplacedValues::Noted() const {
  Entries entries;
  if (!Any()) return entries;
  const std::string text = files_.Read(file_);
  for (std::string_view line : Split(text, '\n')) {
    if (!line.ends_with('\r')) continue;
    line.remove_suffix(1);
    const auto fields = Split(line, '\t');
    if (fields.size() != 5 || fields[4] != kEnd) continue;
    const auto before = Number(fields[1]);
    const auto during = Number(fields[2]);
    if (!before || !during) continue;
    entries.push_back(
        {std::string(fields[3]), ReplacedValue{std::string(fields[0]), *before, *during}});
  }
  return entries;
}

void ReplacedValues::Store(const Entries& entries) {
  if (entries.empty()) {
    if (Any()) files_.Remove(file_);
    return;
  }
  std::string text;
  for (const Entry& entry : entries) text += Line(entry.projectFile, entry.value);
  files_.Write(file_, text);
}

void ReplacedValues::Note(const std::string& projectFile,
                          const std::vector<ReplacedValue>& values) {
  Entries entries = Noted();
  const auto isNoted = [&](const std::string& key) {
    return std::ranges::any_of(entries, [&](const Entry& entry) {
      return entry.value.key == key && EqualsIgnoringCase(entry.projectFile, projectFile);
    });
  };
  const std::size_t count = entries.size();
  for (const ReplacedValue& value : values) {
    if (value.before != value.during && !isNoted(value.key)) {
      entries.push_back({projectFile, value});
    }
  }
  if (entries.size() > count) Store(entries);
}

std::optional<ValuePlace> ReplacedValues::PlaceOf(const Entry& entry, const std::string& text) {
  auto place = FindProjectValue(text, entry.value.key);
  const std::string during = std::to_string(entry.value.during);
  if (place && text.substr(place->start, place->size) != during) place.reset();
  return place;
}

void ReplacedValues::Settle(const std::string& projectFile) {
  Entries entries = Noted();
  if (entries.empty()) return;
  std::string text;
  try {
    text = files_.Read(projectFile);
  } catch (const RuntimeError&) {
    return;
  }
  std::erase_if(entries, [&](const Entry& entry) {
    return EqualsIgnoringCase(entry.projectFile, projectFile) && !PlaceOf(entry, text);
  });
  Store(entries);
}

void ReplacedValues::Forget(const std::string& projectFile) {
  Entries entries = Noted();
  std::erase_if(entries, [&](const Entry& entry) {
    return EqualsIgnoringCase(entry.projectFile, projectFile);
  });
  Store(entries);
}

void ReplacedValues::WriteBack() {
  if (!Any()) return;
  try {
    Entries left;
    Entries entries = Noted();
    while (!entries.empty()) {
      const std::string projectFile = entries.front().projectFile;
      const auto others = std::stable_partition(
          entries.begin(), entries.end(),
          [&](const Entry& entry) { return EqualsIgnoringCase(entry.projectFile, projectFile); });
      const Entries own(entries.begin(), others);
      entries.erase(entries.begin(), others);
      if (!Mended(projectFile, own)) left.insert(left.end(), own.begin(), own.end());
    }
    Store(left);
  } catch (const RuntimeError& error) {
    Tell("The note of debug values that must be written back is of no use: " + error.Description());
  }
}

// True when nothing is left to be done. In one write, and without the line break that each write of
// a run adds.
bool ReplacedValues::Mended(const std::string& projectFile, const Entries& entries) {
  try {
    if (!FileExists(files_, projectFile) && FolderExists(files_, StripPath(projectFile))) {
      return true;  // a project that was deleted since
    }
    std::string text = files_.Read(projectFile);
    const std::string found = text;
    for (const Entry& entry : entries) {
      const auto place = PlaceOf(entry, text);
      if (place) text.replace(place->start, place->size, std::to_string(entry.value.before));
    }
    if (text == found) return true;
    files_.Write(projectFile, text);
    Tell("Wrote back the debug values of " + projectFile +
         ", which a build that was killed had left");
    return true;
  } catch (const RuntimeError& error) {
    Tell("Could not write back the debug values of " + projectFile +
         ", which a build that was killed had left: " + error.Description());
    return false;
  }
}

void ReplacedValues::Tell(const std::string& line) {
  log_.WriteLog(line);
  told.Emit(line);
}

}  // namespace gorbex
