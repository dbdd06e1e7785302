#include "build/side_by_side.h"

#include <algorithm>
#include <chrono>
#include <utility>

#include "build/run_uses.h"
#include "core/file_tools.h"
#include "freshness/project_sources.h"
#include "platform/code_page.h"
#include "platform/windows_path.h"

namespace gorbex {
namespace {

/// While it lives, the lines of the activity log join a project's others.
class LogLines {
 public:
  LogLines(ActivityLog& log, std::string& lines) : log_(log), before_(log.Collect(&lines)) {}
  ~LogLines() { log_.Collect(before_); }
  LogLines(const LogLines&) = delete;
  LogLines& operator=(const LogLines&) = delete;

 private:
  ActivityLog& log_;
  std::string* before_;
};

// The claims are the built file, the folder of the project file, and those of its sources: the
// compiler leaves work files beside them. Without sources when the project file cannot be read.
void AddClaims(ScheduledProject& scheduled, const clsMember& project, const std::string& folder,
               const FileReader& files) {
  const std::string own = StripPath(project.path);
  const ProjectSources sources = ReadSources(ReadOrEmpty(files, project.path));
  scheduled.writes = LowerCase(BuiltFile(project, folder));
  if (!sources.compatibleBinary.empty()) {
    scheduled.reads = LowerCase(ResolvedPath(own, sources.compatibleBinary));
  }
  std::vector<std::string>& claims = scheduled.claims;
  claims = {scheduled.writes, LowerCase(own)};
  for (const std::string& source : sources.members) {
    claims.push_back(LowerCase(StripPath(ResolvedPath(own, source))));
  }
  std::ranges::sort(claims);
  claims.erase(std::ranges::unique(claims).begin(), claims.end());
}

}  // namespace

RunSchedule ScheduleOf(const frmBuilder& window, const GroupDependency& group,
                       const FileReader& files, Freshness& freshness,
                       const std::vector<std::string>& paths) {
  auto uses = UsesInRun(window.ProjectMembers, group, paths);
  std::vector<ScheduledProject> projects(paths.size());
  for (std::size_t i = 0; i < paths.size(); ++i) {
    const clsMember* member = window.ProjectMembers.Find(paths[i]);
    if (member == nullptr) continue;
    projects[i].uses = std::move(uses[i]);
    AddClaims(projects[i], *member, window.buildDirectory, files);
    projects[i].lastDuration = freshness.LastDuration(*member, window.buildDirectory);
  }
  return RunSchedule(std::move(projects));
}

SideBySide::SideBySide(const RunParts& parts, RunState& run, RunEvents& events, std::size_t places)
    : parts_(parts),
      run_(run),
      events_(events),
      places_(places),
      paths_(run.TakenFrom(parts.window.lvwQueue)),
      components_(paths_.size()),
      schedule_(ScheduleOf(parts.window, parts.group, parts.files, parts.freshness, paths_)) {}

SideBySide::~SideBySide() {
  Procedure::IgnoringErrors().Run([this](Procedure& on) {
    while (!building_.empty()) Finish(on, AwaitOne());
    WriteScript(on);
  });
}

void SideBySide::Run(Procedure& on) {
  TellPace();
  for (;;) {
    StartReady(on);
    if (building_.empty()) {
      if (failed_.empty() || !GoesOnAfterFailures(on)) return;
    } else {
      Finish(on, AwaitOne());
    }
  }
}

void SideBySide::StartReady(Procedure& on) {
  while (building_.size() < places_ && failed_.empty() && !parts_.work.RunStops()) {
    const auto project = schedule_.Next();
    if (!project) return;
    Start(on, *project);
  }
}

void SideBySide::Start(Procedure& on, std::size_t project) {
  const std::string& path = paths_[project];
  const std::size_t place = FreePlace();
  Building next{project, place, run_.WorkingTime(),
                std::make_unique<ProjectBuild>(parts_, run_, events_, path, place)};
  if (Begins(on, next)) {
    building_.push_back(std::move(next));
  } else {
    Settle(next);
  }
  TellPace();
}

bool SideBySide::Begins(Procedure& on, Building& next) {
  const std::string& path = paths_[next.project];
  const ListRow* row = parts_.window.lvwQueue.Find(path);
  if (row == nullptr || !run_.Takes(*row)) return false;
  const LogLines lines(parts_.log, next.log);
  on([&] { parts_.log.WriteLog(path); });
  return !next.build->IsSkipped(on) && next.build->Begin(on);
}

std::size_t SideBySide::FreePlace() const {
  std::size_t place = 1;
  const auto isTaken = [&](const Building& building) { return building.place == place; };
  while (std::ranges::any_of(building_, isTaken)) ++place;
  return place;
}

// A short wait for one of them: another one may end meanwhile.
SideBySide::Building SideBySide::AwaitOne() {
  constexpr std::chrono::milliseconds kPatience{3};
  const auto hasEnded = [](const Building& building) { return building.build->HasEnded({}); };
  for (;;) {
    auto ended = std::ranges::find_if(building_, hasEnded);
    if (ended == building_.end() && building_.front().build->HasEnded(kPatience)) {
      ended = building_.begin();
    }
    const bool isFound = ended != building_.end();
    const std::size_t at = static_cast<std::size_t>(ended - building_.begin());
    parts_.events.DoEvents();
    if (!isFound) continue;
    Building building = std::move(building_[at]);
    building_.erase(building_.begin() + static_cast<std::ptrdiff_t>(at));
    return building;
  }
}

void SideBySide::Finish(Procedure& on, Building building) {
  bool succeeded = false;
  {
    const LogLines lines(parts_.log, building.log);
    succeeded = building.build->Finish(on);
  }
  Settle(building);
  TellPace();
  const bool asks = parts_.options.StopProcessing && !parts_.work.Ends();
  if (!succeeded && asks) failed_.push_back(std::move(building.build));
}

void SideBySide::Settle(const Building& building) {
  components_[building.project] = building.build->Component();
  schedule_.Done(building.project);
  if (!building.log.empty()) parts_.log.WriteCollected(building.log);
}

bool SideBySide::GoesOnAfterFailures(Procedure& on) {
  for (const auto& build : std::exchange(failed_, {})) {
    if (!on([&] { return build->AskToGoOn(); })) run_.isCancelled = true;
    if (run_.isCancelled) return false;
  }
  return true;
}

void SideBySide::WriteScript(Procedure& on) {
  for (const std::string& component : components_) {
    if (component.empty()) continue;
    on([&] { parts_.script.AddComponent(parts_.window.buildDirectory, component); });
  }
}

void SideBySide::TellPace() {
  std::vector<ProjectAtWork> atWork;
  atWork.reserve(building_.size());
  for (const Building& each : building_) {
    atWork.push_back({each.project, run_.WorkingTime() - each.start});
  }
  events_.Emit(RunPaced{schedule_.DoneCount(), building_.size(), paths_.size(),
                        schedule_.TimeLeft(places_, atWork)});
}

}  // namespace gorbex
