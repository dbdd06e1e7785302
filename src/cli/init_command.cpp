#include <ostream>

#include "analysis/group_graph.h"
#include "cli/commands.h"
#include "cli/json_views.h"
#include "cli/session.h"
#include "cli/text_output.h"
#include "core/group_file.h"
#include "core/list_columns.h"
#include "core/project_file.h"

namespace gorbex::cli {
namespace {

struct InitArguments {
  std::string source;
  std::string output;
  std::string buildFolder;
  bool crLf = false;
  bool force = false;
};

FoundProjects FindProjects(const FileReader& files, const std::string& source) {
  if (FolderExists(files, source)) return ProjectsInFolder(files, source);
  return {ProjectsInGroup(source, files.Read(source)), {}};
}

// Gives a project file the line ends that the compiler wants; leaves all others as they are.
void ConvertLineEnds(FileSystem& files, const std::string& path) {
  if (!FileExists(files, path)) return;
  const std::string text = files.Read(path);
  if (text.find('\r') == std::string::npos && text.find('\n') != std::string::npos) {
    files.Write(path, WithCrLf(text));
  }
}

void ReadAll(Session& session, const InitArguments& arguments) {
  Program& program = session.program();
  const auto [projects, unreachable] =
      FindProjects(program.platform.files, session.ProgramPath(arguments.source));
  for (const std::string& path : unreachable) {
    program.reader.leftOut.Emit(path, std::string(kUnreachableName));
  }
  if (projects.empty())
    throw Failure(ExitStatus::Unusable, arguments.source + ": no projects found");
  for (const std::string& path : projects) {
    if (arguments.crLf) ConvertLineEnds(program.platform.files, path);
    program.reader.ReadProject(path);
  }
  if (program.window.ProjectMembers.Count() == 0) {
    throw Failure(ExitStatus::Unusable, arguments.source + ": no project of it could be read");
  }
}

// Dependencies first. The queue's own Arrange knows one dependency per row; here all are known.
void QueueAll(Session& session) {
  Program& program = session.program();
  const MemberCollection& members = program.window.ProjectMembers;
  const GroupGraph graph(members, program.group);
  std::vector<std::string> paths;
  for (const auto& member : members) paths.push_back(member->path);
  for (const std::size_t project : graph.BuildOrder()) program.queue.Add(paths[project]);
  WarnOfCycles(session, graph);
}

Json PathsJson(const std::vector<std::string>& paths) {
  Json array = Json::array();
  for (const std::string& path : paths) array.push_back(JsonText(path));
  return array;
}

void Report(const Frame& frame, Session& session, const std::string& output) {
  const ListView& queue = session.program().window.lvwQueue;
  if (!frame.json) {
    frame.streams.out << queue.Count() << " projects in " << output << '\n';
    return;
  }
  std::vector<std::string> queued;
  for (const auto& row : queue.Rows()) queued.push_back(row->SubItem(queue_column::kProject));
  frame.streams.out << Written(Json{{"file", JsonText(session.program().window.fileName)},
                                    {"queue", PathsJson(queued)},
                                    {"leftOut", PathsJson(session.LeftOut())}})
                    << '\n';
}

void Init(Frame& frame, const InitArguments& arguments) {
  Session session(frame);
  session.RequireSettings();
  Program& program = session.program();
  const std::string output = session.ProgramPath(arguments.output);
  if (!arguments.force && FileExists(program.platform.files, output)) {
    throw Failure(ExitStatus::Unusable,
                  arguments.output + ": exists already (--force replaces it)");
  }
  if (!arguments.buildFolder.empty()) {
    program.window.buildDirectory = BuildFolder(session, arguments.buildFolder);
    if (!FolderExists(program.platform.files, program.window.buildDirectory)) {
      session.Warn(arguments.buildFolder + ": no such folder; it must be there for a build");
    }
  }
  program.options.BuildPath = program.window.buildDirectory;
  program.options.Compatible = true;
  ReadAll(session, arguments);
  QueueAll(session);
  if (!program.buildProject.SaveProject(output)) {
    throw Failure(ExitStatus::Unusable, arguments.output + ": not written");
  }
  Report(frame, session, arguments.output);
  if (!session.LeftOut().empty()) frame.status = ExitStatus::WorkFailed;
}

}  // namespace

std::string BuildFolder(const Session& session, const std::string& typed) {
  std::string folder = session.ProgramPath(typed);
  if (!folder.ends_with('\\')) folder += '\\';
  return folder;
}

void AddInitCommand(CLI::App& app, Frame& frame) {
  CLI::App& command =
      AddJsonCommand(app, frame, "init",
                     "Make a build project file of all projects of a .vbg group or below a folder");
  auto arguments = std::make_shared<InitArguments>();
  command.add_option("SOURCE", arguments->source, "Group file (.vbg) or folder")->required();
  command.add_option("-o,--output", arguments->output, "The build project file to make")
      ->required();
  command.add_option("--build-dir", arguments->buildFolder,
                     "Folder that all binaries are built to");
  command.add_flag("--crlf", arguments->crLf,
                   "Give project files whose lines end in LF only the CR LF the compiler wants");
  command.add_flag("--force", arguments->force, "Replace an existing file");
  command.callback([&frame, arguments] { Init(frame, *arguments); });
}

}  // namespace gorbex::cli
