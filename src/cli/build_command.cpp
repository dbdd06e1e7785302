#include <algorithm>
#include <ostream>

#include "build/terms_in_force.h"
#include "build/version_stamp.h"
#include "cli/commands.h"
#include "cli/json_views.h"
#include "cli/junit_report.h"
#include "cli/run_printer.h"
#include "cli/run_record.h"
#include "cli/session.h"
#include "cli/source_control_options.h"
#include "cli/text_output.h"
#include "cli/time_limit.h"
#include "core/list_columns.h"
#include "core/text.h"
#include "platform/code_page.h"

namespace gorbex::cli {
namespace {

struct BuildArguments {
  std::string file;
  std::vector<std::string> projects;
  SourceControlOptions sourceControl;
  bool all = false;
  bool get = false;
  bool debug = false;
  bool breakCompat = false;
  bool changeRefs = false;
  bool stopOnError = false;
  bool skipUsersOfFailed = false;
  std::string version;
  std::string buildFolder;
  std::string compiler;
  std::string script;
  std::string junit;
  int timeLimit = 0;  ///< seconds; 0 for none
};

// Longer numbers fit no project file.
bool IsVersion(const std::string& text) {
  const auto parts = Split(text, '.');
  return parts.size() == 3 && std::all_of(parts.begin(), parts.end(), [](std::string_view part) {
           return !part.empty() && part.size() <= 4 &&
                  part.find_first_not_of("0123456789") == std::string_view::npos;
         });
}

// The compiler needs an existing folder. It is also quoted in the compiler's command line,
// where an impossible name could pose as further arguments.
void RequireBuildFolder(const Program& program) {
  const std::string& folder = program.window.buildDirectory;
  if (folder.empty() || FolderExists(program.platform.files, folder)) return;
  throw Failure(ExitStatus::Unusable, Plain(folder) + ": no such build folder");
}

// The build project may bring one, too.
void RequireVersion(const std::string& version) {
  if (version.empty() || CanBeStamped(version)) return;
  throw Failure(ExitStatus::Unusable,
                Plain(version) +
                    ": a version is written x.x.x, and its numbers written one after the other "
                    "must not exceed 2147483647");
}

// By the time the run would miss it, projects have been amended.
std::string RequiredCompiler(Session& session, const std::string& typed) {
  std::string path = session.ProgramPath(typed);
  if (FileExists(session.program().platform.files, path)) return path;
  throw Failure(ExitStatus::Unusable, typed + ": no such compiler");
}

void Override(Session& session, const BuildArguments& arguments) {
  Program& program = session.program();
  clsOptions& options = program.options;
  if (arguments.get) options.GetLatest = true;
  if (arguments.debug) options.DebugBuild = "True";
  if (arguments.breakCompat) options.Compatible = false;
  if (arguments.changeRefs) options.ChangeRefs = true;
  if (arguments.stopOnError) options.StopProcessing = true;
  if (arguments.skipUsersOfFailed) options.SkipUsersOfFailed = true;
  if (!arguments.version.empty()) {
    if (!IsVersion(arguments.version)) {
      throw Failure(ExitStatus::Unusable,
                    arguments.version + ": a version is written x.x.x, in numbers up to 9999");
    }
    options.VersionComponents = arguments.version;
  }
  RequireVersion(options.VersionComponents);
  if (!arguments.buildFolder.empty()) {
    program.window.buildDirectory = BuildFolder(session, arguments.buildFolder);
  }
  RequireBuildFolder(program);
  if (!arguments.compiler.empty()) {
    program.window.compilerPath = RequiredCompiler(session, arguments.compiler);
  }
}

// Named projects are built whether they are queued and marked or not.
void MarkForBuild(Session& session, const BuildArguments& arguments) {
  frmBuilder& window = session.program().window;
  if (arguments.all) window.menu.mnuQueueMarkAll.Execute();
  if (arguments.projects.empty()) return;
  window.menu.mnuQueueUnMarkAll.Execute();
  for (const std::string& typed : arguments.projects) {
    const std::string path = session.LoadedProject(typed);
    session.program().queue.Add(path);
    window.lvwQueue.Find(path)->SetChecked(true);
  }
}

std::vector<std::string> CheckedProjects(const ListView& queue) {
  std::vector<std::string> paths;
  for (const auto& row : queue.Rows()) {
    if (row->Checked()) paths.push_back(row->SubItem(queue_column::kProject));
  }
  return paths;
}

std::string_view OutcomeName(RunRecord::Outcome outcome) {
  switch (outcome) {
    case RunRecord::Outcome::Built:
      return "built";
    case RunRecord::Outcome::Failed:
      return "failed";
    case RunRecord::Outcome::NotBuilt:
      return "notBuilt";
  }
  return "";
}

Json RunJson(const RunRecord& record, const std::string& script) {
  Json projects = Json::array();
  for (const auto& project : record.Projects()) {
    projects.push_back({{"path", JsonText(project.path)},
                        {"result", OutcomeName(project.outcome)},
                        {"log", JsonText(project.log)},
                        {"got", project.got ? Json(*project.got) : Json()}});
  }
  Json messages = Json::array();
  for (const std::string& message : record.Messages()) messages.push_back(JsonText(message));
  return {{"built", record.End().built},
          {"errors", record.End().errors},
          {"projects", projects},
          {"messages", messages},
          {"script", JsonText(script)}};
}

// A report that cannot be written does not keep the other from being written.
bool WriteReports(Session& session, const BuildArguments& arguments, const RunRecord& record) {
  Program& program = session.program();
  bool isWritten = true;
  const auto write = [&](const std::string& typed, const auto& writeTo) {
    if (typed.empty()) return;
    std::string problem;
    try {
      return writeTo(session.ProgramPath(typed));
    } catch (const Failure& failure) {
      problem = failure.what();
    } catch (const RuntimeError& error) {
      problem = Plain(error.Description());
    }
    session.Warn("the report could not be written: " + problem);
    isWritten = false;
  };
  write(arguments.script, [&](const std::string& path) { program.script.Save(path); });
  write(arguments.junit, [&](const std::string& path) {
    program.platform.files.Write(path, JUnitReport(record, program.window.fileName));
  });
  return isWritten;
}

bool IsLeft(const RunRecord::Project& project) {
  return project.outcome == RunRecord::Outcome::NotBuilt;
}

ExitStatus StatusOf(const RunRecord& record, bool endWanted) {
  const auto& projects = record.Projects();
  if (projects.empty()) return ExitStatus::NothingChecked;
  if (endWanted && std::any_of(projects.begin(), projects.end(), IsLeft)) {
    return ExitStatus::WorkFailed;
  }
  const RunEnded& end = record.End();
  if (end.result == RunResult::KeptReferences) return ExitStatus::Unusable;
  const bool done = end.result == RunResult::Finished && end.errors == 0 && end.unamended.empty() &&
                    std::none_of(projects.begin(), projects.end(),
                                 [](const auto& each) { return each.IsNotGot(); });
  return done ? ExitStatus::Done : ExitStatus::WorkFailed;
}

void Build(Frame& frame, const BuildArguments& arguments) {
  Session session(frame);
  session.Open(arguments.file);
  UseSourceControl(session, arguments.sourceControl);
  if (arguments.get) RequireInitialisationFile(session);
  Override(session, arguments);
  MarkForBuild(session, arguments);

  Program& program = session.program();
  if (frame.streams.animates) {
    const auto terms = TermsInForce(program.window, program.options);
    frame.streams.err << Plain(TermsLine(terms)) << '\n';
  }
  RunRecord record(CheckedProjects(program.window.lvwQueue));
  std::ostream& lines = frame.json ? frame.streams.err : frame.streams.out;
  RunPrinter printer(frame, lines, program.platform.clock);
  TimeLimit limit(session, std::chrono::seconds(arguments.timeLimit));
  session.onIdle = [&] {
    printer.Tick();
    limit.Tick();
    if (session.host().EndWanted()) program.run.End();
    session.EndStepOnRequest();
  };
  const Subscription listening = program.run.events.Connect([&](const RunEvent& event) {
    record.On(event);
    printer.On(event);
  });
  session.host().ListenForEnd();
  const auto alone = session.BuildAlone();
  if (session.host().EndWanted()) {
    throw Failure(ExitStatus::WorkFailed, "ended on request before the build began");
  }
  program.window.menu.mnuFileBuild.Execute();
  session.onIdle = nullptr;

  const RunResult result = record.End().result;
  const bool isRefused = result == RunResult::Refused || result == RunResult::KeptReferences;
  const bool isAnswered = frame.no || frame.streams.asks;
  if (isRefused && !isAnswered) {
    session.Warn("nothing was built: with --yes such a build goes on");
  }
  if (frame.json) {
    frame.streams.out << Written(RunJson(record, program.window.registrationScript)) << '\n';
  }
  const bool isReported = WriteReports(session, arguments, record);
  frame.status = isReported ? StatusOf(record, session.host().EndWanted()) : ExitStatus::Unusable;
}

}  // namespace

void AddBuildCommand(CLI::App& app, Frame& frame) {
  CLI::App& command =
      AddJsonCommand(app, frame, "build", "Build the checked projects of the queue");
  auto arguments = std::make_shared<BuildArguments>();
  command.add_option("FILE.bpf", arguments->file, "Build project file")->required();
  auto* projects = command.add_option("PROJECT.vbp", arguments->projects,
                                      "Build these projects instead of the checked ones");
  command.add_flag("--all", arguments->all, "Build every row of the queue")->excludes(projects);
  command.add_flag("--get", arguments->get, "Get the latest sources before each project");
  AddSourceControlOptions(command, arguments->sourceControl);
  command.add_option("--version", arguments->version, "Stamp this version (x.x.x)");
  command.add_flag("--debug", arguments->debug, "Build with debug information");
  command.add_flag("--break-compat", arguments->breakCompat, "Do not keep compatibility");
  command.add_flag("--change-refs", arguments->changeRefs,
                   "Repoint references to components rebuilt in this run");
  command.add_option("--build-dir", arguments->buildFolder, "Build everything into this folder");
  command.add_option("--compiler", arguments->compiler,
                     "Use this compiler instead of the registered one");
  command.add_flag("--stop-on-error", arguments->stopOnError, "Ask after each failed project");
  command.add_flag("--skip-users-of-failed", arguments->skipUsersOfFailed,
                   "Skip projects that use one that failed");
  command.add_option("--script", arguments->script, "Write the registration script to this file");
  command.add_option("--junit", arguments->junit, "Write a JUnit report to this file");
  AddTimeLimit(command, arguments->timeLimit);
  AddAnswers(command, frame);
  command.callback([&frame, arguments] { Build(frame, *arguments); });
}

}  // namespace gorbex::cli
