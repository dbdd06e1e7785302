#include "check/group_check.h"
#include "cli/check_options.h"
#include "cli/commands.h"
#include "cli/finding_views.h"
#include "cli/json_views.h"
#include "cli/output_option.h"
#include "cli/session.h"
#include "core/file_tools.h"
#include "platform/code_page.h"

namespace gorbex::cli {
namespace {

struct CheckArguments {
  std::vector<std::string> files;
  CheckSelection selection;
  std::string sarif;
};

bool HasExtension(const std::string& path, std::string_view extension) {
  return LowerCase(path).ends_with(extension);
}

/// A group file, a folder or project files without a build project.
struct Source {
  std::string path;
  std::vector<std::string> projects;  ///< instead of the path
  std::string folder;
};

std::optional<Source> SourceOf(const Session& session, const std::vector<std::string>& typed,
                               const FileReader& files) {
  Source source;
  for (const std::string& each : typed) {
    std::string path = session.ProgramPath(each);
    if (HasExtension(path, ".vbp")) {
      source.projects.push_back(std::move(path));
    } else if (typed.size() > 1) {
      throw Failure(each + ": only project files (.vbp) can be checked several at once");
    } else {
      source.path = std::move(path);
    }
  }
  if (!source.projects.empty()) {
    source.folder = StripPath(source.projects.front());
    return source;
  }
  const bool isFolder = FolderExists(files, source.path);
  if (!isFolder && !HasExtension(source.path, ".vbg")) return std::nullopt;
  source.folder = isFolder ? source.path : StripPath(source.path);
  return source;
}

CheckedGroup::Scope Load(Session& session, const std::string& typed, const Source& source) {
  session.RequireSettings();
  session.LeaveJudgement();
  const auto made = session.program().newBuildProject.Make(
      {source.path, {}, NewBuildProject::LineEnds::AreKept, source.projects});
  if (made.problem) throw Failure(typed + ": " + *made.problem);
  CheckedGroup::Scope scope;
  scope.file = source.projects.empty() ? source.path : source.projects.front();
  scope.named = session.LeftOut();
  scope.hasQueue = false;
  return scope;
}

Findings FindingsIn(Session& session, const CheckArguments& arguments) {
  Program& program = session.program();
  const auto source = SourceOf(session, arguments.files, program.platform.files);
  if (!source) {
    session.OpenToCheck(arguments.files.front());
    const std::string folder = StripPath(program.window.fileName);
    return program.check.RunOpen(SelectionOf(session, arguments.selection, folder));
  }
  auto scope = Load(session, arguments.files.front(), *source);
  return program.check.Run(std::move(scope),
                           SelectionOf(session, arguments.selection, source->folder));
}

void CheckGroup(Frame& frame, const CheckArguments& arguments) {
  RequireKnownIds(arguments.selection);
  Session session(frame);
  const Findings findings = FindingsIn(session, arguments);
  if (!arguments.sarif.empty()) {
    session.program().platform.files.Write(session.ProgramPath(arguments.sarif),
                                           Written(FindingsSarif(session.host(), findings)) + "\n");
  }
  if (frame.json) {
    PrintJson(frame, FindingsJson(findings));
  } else {
    PrintFindings(session, frame.streams.out, findings);
  }
  AnnotateFindings(session, findings);
  if (ErrorsIn(findings) > 0) frame.status = ExitStatus::WorkFailed;
}

}  // namespace

void AddCheckCommand(CLI::App& app, Frame& frame) {
  CLI::App& command =
      AddJsonCommand(app, frame, "check", "Find what would make a run fail or do harm");
  auto arguments = std::make_shared<CheckArguments>();
  command
      .add_option("FILE", arguments->files,
                  "Build project file, group file (.vbg), folder, or project files (.vbp)")
      ->required();
  AddOutput(command, "--sarif", arguments->sarif, "Write a SARIF 2.1.0 report to this file");
  AddCheckOptions(command, arguments->selection);
  command.callback([&frame, arguments] { CheckGroup(frame, *arguments); });
}

}  // namespace gorbex::cli
