#include "check/checked_sources.h"

#include <unordered_map>
#include <utility>

#include "check/checked_group.h"
#include "core/project_file.h"
#include "platform/code_page.h"
#include "platform/windows_path.h"

namespace gorbex {
namespace {

void ReadText(CheckedSource& source, const FileReader& files) {
  try {
    const std::string text = files.Read(source.path);
    source.lineEnds = LineEndProblem(text).value_or("");
  } catch (const RuntimeError& error) {
    source.state = CheckedSource::State::Unreadable;
    source.problem = error.Description();
  }
}

void Look(CheckedSource& source, DiskNames& disk) {
  const DiskNames::Entry* entry = disk.Find(source.path);
  if (entry == nullptr) {
    source.state = CheckedSource::State::Missing;
    return;
  }
  source.other = entry->other;
  if (!entry->isFolder) return;
  source.state = CheckedSource::State::Unreadable;
  source.problem = "it is a folder";
}

}  // namespace

std::deque<CheckedSource> SourcesOf(CheckedGroup& group, bool readsThem) {
  std::deque<CheckedSource> sources;
  std::unordered_map<std::string, std::size_t> numbers;
  std::size_t lines = 0;
  for (const CheckedProject& project : group.Projects()) lines += project.lines.size();
  numbers.reserve(lines / 2);
  for (const CheckedProject& project : group.Projects()) {
    for (const ProjectLine& line : project.lines) {
      const bool isText = line.kind == ProjectLine::Kind::Source;
      if (!isText && line.kind != ProjectLine::Kind::Resource) continue;
      if (line.value.empty()) continue;
      std::string path = ResolvedPath(project.folder, line.value);
      const auto [at, isNew] = numbers.try_emplace(LowerCase(path), sources.size());
      if (isNew) {
        CheckedSource& source = sources.emplace_back();
        source.path = std::move(path);
        Look(source, group.Disk());
        if (isText && readsThem && source.state == CheckedSource::State::Sound) {
          ReadText(source, group.Parts().files);
        }
      }
      sources[at->second].uses.push_back({&project, line.number, line.value});
    }
  }
  return sources;
}

}  // namespace gorbex
