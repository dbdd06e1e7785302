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

void Judge(CheckedSource& source, const DiskNames::Entry* entry) {
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
  // The numbers of the files: by entry in their folder, and by path only where there is none.
  std::unordered_map<const DiskNames::Entry*, std::size_t> found;
  std::unordered_map<std::string, std::size_t> missing;
  for (const CheckedProject& project : group.Projects()) {
    for (const ProjectLine& line : project.lines) {
      const bool isText = line.kind == ProjectLine::Kind::Source;
      if (!isText && line.kind != ProjectLine::Kind::Resource) continue;
      if (line.value.empty()) continue;
      std::string path = ResolvedPath(project.folder, line.value);
      const DiskNames::Entry* entry = group.Disk().Find(path);
      const std::size_t number =
          entry != nullptr ? found.try_emplace(entry, sources.size()).first->second
                           : missing.try_emplace(LowerCase(path), sources.size()).first->second;
      if (number == sources.size()) {
        CheckedSource& source = sources.emplace_back();
        source.path = std::move(path);
        Judge(source, entry);
        if (isText && readsThem && source.state == CheckedSource::State::Sound) {
          ReadText(source, group.Parts().files);
        }
      }
      sources[number].uses.push_back({&project, line.number, line.value});
    }
  }
  return sources;
}

}  // namespace gorbex
