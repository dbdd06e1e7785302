#include <ostream>

#include "check/group_check.h"
#include "cli/commands.h"
#include "cli/finding_views.h"
#include "cli/json_views.h"
#include "cli/session.h"
#include "core/list_columns.h"

namespace gorbex::cli {
namespace {

struct InitArguments {
  std::string source;
  std::string output;
  std::string buildFolder;
  bool crLf = false;
  bool force = false;
};

void Report(const Frame& frame, Session& session, const std::string& output) {
  const ListView& queue = session.program().window.lvwQueue;
  // The findings of a check, without those that are told already.
  const Findings findings = session.program().check.RunOpen(
      {{}, {"circle", "line-ends", "project-unreadable", "compiler-missing"}});
  if (!frame.json) {
    frame.streams.out << queue.Count() << " projects in " << output << '\n';
    if (!findings.empty()) PrintFindings(session, frame.streams.out, findings);
    return;
  }
  std::vector<std::string> queued;
  for (const auto& row : queue.Rows()) queued.push_back(row->SubItem(queue_column::kProject));
  PrintJson(frame, {{"file", JsonText(session.program().window.fileName)},
                    {"queue", JsonTexts(queued)},
                    {"leftOut", JsonTexts(session.LeftOut())},
                    {"findings", FindingsJson(findings)["findings"]}});
}

void Init(Frame& frame, const InitArguments& arguments) {
  Session session(frame);
  session.RequireSettings();
  Program& program = session.program();
  const std::string output = session.ProgramPath(arguments.output);
  if (!arguments.force && FileExists(program.platform.files, output)) {
    throw Failure(arguments.output + ": exists already (--force replaces it)");
  }
  NewBuildProject::Request request{session.ProgramPath(arguments.source), {}};
  if (!arguments.buildFolder.empty()) {
    request.buildFolder = BuildFolder(session, arguments.buildFolder);
    if (!FolderExists(program.platform.files, request.buildFolder)) {
      session.Warn(arguments.buildFolder + ": no such folder; it must be there for a build");
    }
  }
  if (arguments.crLf) request.lineEnds = NewBuildProject::LineEnds::AreConverted;
  const auto made = program.newBuildProject.Make(request);
  if (made.problem) throw Failure(arguments.source + ": " + *made.problem);
  WarnOfCycles(session, made.cycles);
  if (!program.buildProject.SaveProject(output)) throw Failure(arguments.output + ": not written");
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
  AddAnswers(command, frame);
  auto arguments = std::make_shared<InitArguments>();
  command.add_option("SOURCE", arguments->source, "Group file (.vbg) or folder")->required();
  command.add_option("-o,--output", arguments->output, "The build project file to make")
      ->required();
  command.add_option("--build-dir", arguments->buildFolder,
                     "Folder that all binaries are built to");
  command.add_flag("--crlf", arguments->crLf,
                   "Change project files whose lines end in LF only to the CR LF that the compiler "
                   "wants, without asking");
  command.add_flag("--force", arguments->force, "Replace an existing file");
  command.callback([&frame, arguments] { Init(frame, *arguments); });
}

}  // namespace gorbex::cli
