#include "analysis/new_build_project.h"

#include "analysis/dependency_graph.h"
#include "core/group_file.h"
#include "core/text.h"

namespace gorbex {
namespace {

FoundProjects FindProjects(const FileReader& files, const NewBuildProject::Request& request) {
  if (!request.projects.empty()) return {request.projects, {}};
  const std::string& source = request.source;
  if (FolderExists(files, source)) return ProjectsInFolder(files, source);
  return {ProjectsInGroup(source, files.Read(source)), {}};
}

// The compiler wants CR LF. Files whose lines end in something else again are not touched.
std::vector<std::string> WithLineFeedsOnly(const FileReader& files,
                                           const std::vector<std::string>& projects) {
  std::vector<std::string> found;
  for (const std::string& path : projects) {
    if (!FileExists(files, path)) continue;
    const std::string text = files.Read(path);
    const bool hasLineFeed = text.find('\n') != std::string::npos;
    if (hasLineFeed && text.find('\r') == std::string::npos) found.push_back(path);
  }
  return found;
}

}  // namespace

NewBuildProject::Result NewBuildProject::Make(const Request& request) {
  const auto [projects, unreachable] = FindProjects(uses_.files, request);
  for (const std::string& path : unreachable) {
    uses_.reader.leftOut.Emit(path, std::string(kUnreachableName));
  }
  if (projects.empty()) return {"no projects found", {}};
  if (!MayGoOn(projects, request.lineEnds)) return {"cancelled", {}, true};
  uses_.buildProject.BeginNew();
  uses_.window.buildDirectory = request.buildFolder;
  uses_.options.BuildPath = request.buildFolder;
  uses_.options.VersionComponents.clear();
  uses_.options.Compatible = true;
  ReadAll(projects);
  if (uses_.window.ProjectMembers.Count() == 0) return {"no project of it could be read", {}};
  uses_.window.ProjectChanged = true;
  return {{}, QueueAll()};
}

// Converts files where that is wanted. False when the user wants to stop here.
bool NewBuildProject::MayGoOn(const std::vector<std::string>& projects, LineEnds lineEnds) {
  if (lineEnds == LineEnds::AreKept) return true;
  const auto toConvert = WithLineFeedsOnly(uses_.files, projects);
  if (toConvert.empty()) return true;
  if (lineEnds == LineEnds::AreAskedAbout) {
    std::string text =
        "The lines of these project files end in LF only, which the compiler cannot read:";
    text.append(kLineBreak).append(ShortList(toConvert)).append(kLineBreak);
    text.append("Do you wish to change them to CR LF?");
    const Answer answer = uses_.dialogs.Show({text, Buttons::YesNo, MessageIcon::Question});
    if (answer != Answer::Yes) return answer == Answer::No;
  }
  for (const std::string& path : toConvert) {
    uses_.files.Write(path, WithCrLf(uses_.files.Read(path)));
  }
  return true;
}

void NewBuildProject::ReadAll(const std::vector<std::string>& projects) {
  TreeNode* lastRead = nullptr;
  for (const std::string& path : projects) {
    TreeNode* read = uses_.reader.ReadUnmarked(path);
    if (read != nullptr) lastRead = read;
  }
  uses_.views.ScanLoadedProjects();
  if (lastRead != nullptr) uses_.reader.Show(*lastRead);
}

// The queue's own Arrange knows one dependency per row; here all are known.
std::vector<std::vector<std::string>> NewBuildProject::QueueAll() {
  const DependencyGraph graph(uses_.window.ProjectMembers, uses_.group);
  std::vector<std::string> paths;
  for (const auto& member : uses_.window.ProjectMembers) paths.push_back(member->path);
  for (const std::size_t project : graph.BuildOrder()) uses_.queue.Add(paths[project]);
  ListView& rows = uses_.window.lvwQueue;
  if (rows.Count() > 0) rows.Select(&rows.At(1));
  return CyclesOf(graph, uses_.window.ProjectMembers);
}

void NewBuildProject::mnuFileNewFrom_Click() {
  Procedure(uses_.report, ": frmBuilder.mnuFileNewFrom_Click").Run([&](Procedure& on) {
    if (!uses_.buildProject.OfferToSave(on)) return;
    const auto source = on([&] { return AskForSource(); });
    if (!source) {
      on([&] { uses_.window.SetStatus("Cancelled"); });
      return;
    }
    const auto result = on([&] { return std::optional(Make({*source, {}})); });
    if (!result) return;
    on([&] { Tell(*source, *result); });
    if (!result->problem) on([&] { made.Emit(); });
  });
}

// Asks again for a path that leads nowhere; it can be corrected.
std::optional<std::string> NewBuildProject::AskForSource() {
  FileChoice choice{"New from Group or Folder", "VB Group Files (*.vbg)|*.vbg", "*.vbg",
                    "A build project of all projects of a group file (.vbg), or of all below a "
                    "folder, each queued after those that it uses."};
  while (true) {
    auto source = uses_.dialogs.OpenFileOrFolder(choice);
    if (!source || FileExists(uses_.files, *source) || FolderExists(uses_.files, *source)) {
      return source;
    }
    choice.typed = *source;
    uses_.dialogs.Show(
        {*source + ": no such file or folder", Buttons::Ok, MessageIcon::Exclamation});
  }
}

void NewBuildProject::Tell(const std::string& source, const Result& result) {
  if (result.isCancelled) {
    uses_.window.SetStatus("Cancelled");
    return;
  }
  uses_.findings.Tell();
  std::string text = result.problem ? source + ": " + *result.problem : "";
  for (const auto& cycle : result.cycles) {
    text.append(text.empty() ? "" : kLineBreak);
    text.append("These projects use one another in a circle: ").append(Joined(cycle));
  }
  if (!text.empty()) uses_.dialogs.Show({text, Buttons::Ok, MessageIcon::Exclamation});
  uses_.window.SetStatus(
      Counted(uses_.window.lvwQueue.Count(), "project queued", "projects queued"));
}

}  // namespace gorbex
