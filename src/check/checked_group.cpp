#include "check/checked_group.h"

#include <algorithm>
#include <unordered_set>
#include <utility>

#include "core/file_tools.h"
#include "core/group_file.h"
#include "core/list_columns.h"
#include "core/project_file.h"
#include "freshness/project_sources.h"
#include "platform/code_page.h"

namespace gorbex {

const ProjectLine* CheckedProject::Line(std::string_view key) const {
  const auto found = std::ranges::find_if(lines, [&](const ProjectLine& line) {
    return line.kind == ProjectLine::Kind::Other && EqualsIgnoringCase(line.key, key);
  });
  return found == lines.end() ? nullptr : &*found;
}

std::string_view CheckedProject::Value(std::string_view key) const {
  const ProjectLine* line = Line(key);
  return line == nullptr ? std::string_view() : line->value;
}

bool CheckedProject::IsComponent() const {
  return !EqualsIgnoringCase(record->MemberType, "Exe");
}

CheckedGroup::CheckedGroup(const Uses& uses, Scope scope)
    : uses_(uses), scope_(std::move(scope)), disk_(uses.files) {
  std::unordered_set<std::string> known;
  for (const auto& member : uses_.window.ProjectMembers) {
    known.insert(LowerCase(member->path));
    Read(member->path);
  }
  for (const std::string& path : scope_.named) {
    if (known.insert(LowerCase(path)).second) TakeUnread(path);
  }
  TakeQueue();
}

void CheckedGroup::Read(const std::string& path) {
  std::string text;
  try {
    text = uses_.files.Read(path);
  } catch (const RuntimeError& error) {
    unread_.push_back({path, error.Description(), false});
    return;
  }
  const auto problem = ProjectFileProblem(text);
  if (problem && !LineEndProblem(text)) {
    unread_.push_back({path, *problem, false});
    return;
  }
  const bool isConverted = text.find('\r') == std::string::npos;
  auto member = ParseProjectFile(path, isConverted ? WithCrLf(text) : text).member;
  const clsMember* loaded = uses_.window.ProjectMembers.Find(path);
  if (loaded != nullptr) member.VSSProject = loaded->VSSProject;
  const clsMember& record = members_.Add(std::move(member));
  CheckedProject& project = projects_.emplace_back();
  project.path = path;
  project.folder = StripPath(path);
  project.text = std::move(text);
  project.lines = LinesOf(project.text);
  project.record = &record;
  project.output = BuiltFile(record, uses_.window.buildDirectory);
  byRecord_.emplace(&record, &project);
}

// The rules of the program have left it out; here it counts why.
void CheckedGroup::TakeUnread(const std::string& path) {
  try {
    static_cast<void>(uses_.files.Read(path));
    unread_.push_back({path, "the project could not be loaded", false});
  } catch (const RuntimeError& error) {
    unread_.push_back({path, error.Description(), error.Code() == ErrorNumber::BadFileName});
  }
}

// Without a checked row, every row is meant: marks come and go.
void CheckedGroup::TakeQueue() {
  const auto& rows = uses_.window.lvwQueue.Rows();
  if (rows.empty()) scope_.hasQueue = false;
  const bool anyChecked = std::ranges::any_of(rows, [](const auto& row) { return row->Checked(); });
  std::unordered_map<std::string_view, std::size_t> places;
  for (const auto& row : rows) {
    places.emplace(row->SubItem(queue_column::kProject), places.size() + 1);
  }
  for (CheckedProject& project : projects_) {
    const auto place = places.find(project.path);
    if (!scope_.hasQueue) {
      project.isBuilt = true;
    } else if (place != places.end()) {
      project.row = place->second;
      project.isBuilt = !anyChecked || rows[project.row - 1]->Checked();
    }
  }
}

const DependencyGraph& CheckedGroup::Graph() {
  if (!graph_) graph_.emplace(members_, group_);
  return *graph_;
}

const std::vector<CheckedReference>& CheckedGroup::References() {
  if (!references_) references_ = ReferencesOf(*this);
  return *references_;
}

const std::deque<CheckedSource>& CheckedGroup::Sources() {
  if (!sources_) sources_ = SourcesOf(*this, scope_.readsSources);
  return *sources_;
}

const CheckedProject* CheckedGroup::ProducerOf(std::string_view component,
                                               const std::string& user) const {
  const clsMember* producer = group_.FindProducer(component, user);
  return producer == nullptr ? nullptr : byRecord_.at(producer);
}

}  // namespace gorbex
