#include <algorithm>
#include <ostream>

#include "build/last_run.h"
#include "build/terms_in_force.h"
#include "check/group_check.h"
#include "cli/check_options.h"
#include "cli/commands.h"
#include "cli/finding_views.h"
#include "cli/json_views.h"
#include "cli/junit_report.h"
#include "cli/output_option.h"
#include "cli/run_json.h"
#include "cli/run_options.h"
#include "cli/run_printer.h"
#include "cli/session.h"
#include "cli/source_control_options.h"
#include "cli/time_limit.h"
#include "core/file_tools.h"
#include "core/list_columns.h"
#include "core/run_record.h"
#include "platform/command_line.h"
#include "report/run_page.h"

namespace gorbex::cli {
namespace {

struct BuildArguments {
  std::string file;
  RunOptions run;
  SourceControlOptions sourceControl;
  bool get = false;
  bool stopOnError = false;
  bool skipUsersOfFailed = false;
  bool outdated = false;
  bool upToDateToo = false;
  bool check = false;
  std::string script;
  std::string junit;
  std::string result;
  std::string report;
  int timeLimit = 0;  ///< seconds; 0 for none
};

void Override(Session& session, const BuildArguments& arguments) {
  clsOptions& options = session.program().options;
  if (arguments.get) options.GetLatest = true;
  if (arguments.stopOnError) options.StopProcessing = true;
  if (arguments.skipUsersOfFailed) options.SkipUsersOfFailed = true;
  if (arguments.outdated || arguments.upToDateToo) options.SkipUpToDate = arguments.outdated;
  UseRunOptions(session, arguments.run);
}

/// All that the reports of a run are made of.
struct Account {
  RunRecord record;
  RunTerms terms;
  std::optional<Findings> findings{};  ///< of the check before the run, if any
};

// A report that cannot be written does not keep the other from being written.
bool WriteReports(Session& session, const BuildArguments& arguments, const Account& account) {
  const RunRecord& record = account.record;
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
  write(arguments.result, [&](const std::string& path) {
    program.platform.files.Write(path, Written(RunJson(record, program.window.registrationScript)));
  });
  write(arguments.report, [&](const std::string& path) {
    RunReport report = program.reports.Of(record, account.terms, account.findings);
    report.commandLine = session.frame().commandLine;
    program.platform.files.Write(path, RunPage(report));
  });
  return isWritten;
}

ExitStatus StatusOf(const RunRecord& record, bool endWanted) {
  const auto& projects = record.Projects();
  if (projects.empty()) return ExitStatus::NothingChecked;
  using Project = RunRecord::Project;
  const auto left = std::ranges::count(projects, RunRecord::Outcome::NotBuilt, &Project::outcome);
  if (endWanted && left > 0) return ExitStatus::WorkFailed;
  const RunEnded& end = record.End();
  if (end.result == RunResult::KeptReferences) return ExitStatus::Unusable;
  const bool done = end.result == RunResult::Finished && end.errors == 0 && end.unamended.empty() &&
                    std::ranges::none_of(projects, &Project::IsNotGot);
  return done ? ExitStatus::Done : ExitStatus::WorkFailed;
}

// Prints the findings to the same stream as the run's lines.
Findings FindingsBefore(Session& session, std::ostream& lines) {
  Program& program = session.program();
  const auto selection = SelectionOf(session, {}, StripPath(program.window.fileName));
  Findings findings = program.check.RunOpen(selection);
  if (!findings.empty()) {
    PrintFindings(session, lines, findings);
    AnnotateFindings(session, findings);
  }
  return findings;
}

void AnnotateFailure(const Session& session, const RunEvent& event) {
  const auto* compiled = std::get_if<ProjectCompiled>(&event);
  if (compiled == nullptr || compiled->succeeded) return;
  const std::string& words = compiled->log.empty() ? compiled->problem : compiled->log;
  const std::string text(Trimmed(words));
  const FailurePlace place = compiled->failure.value_or(FailurePlace{compiled->path});
  AnnotateFindings(session,
                   {{.file = place.file, .line = place.line, .text = text, .id = "build"}});
}

// The status that the command then has.
ExitStatus Reported(Session& session, const BuildArguments& arguments, Account& account,
                    ExitStatus status) {
  const Frame& frame = session.frame();
  // Such as one that the check before it has refused.
  if (!account.record.HasEnded()) account.record.On(RunEnded(account.record.End()));
  if (frame.json) {
    PrintJson(frame, RunJson(account.record, session.program().window.registrationScript));
  }
  return WriteReports(session, arguments, account) ? status : ExitStatus::Unusable;
}

// Each project would fail for the same reason, after it has been amended.
void RequireCompiler(const Program& program) {
  const std::string& compiler = program.window.compilerPath;
  const bool hasFolder = compiler.find('\\') != std::string::npos;
  const auto isFile = [&](const std::string& path) {
    return FileExists(program.platform.files, path);
  };
  if (!hasFolder || FindProgram(compiler, isFile)) return;
  throw Failure(Plain(compiler) + ": the registered compiler does not exist");
}

void Build(Frame& frame, const BuildArguments& arguments) {
  Session session(frame);
  RequireOwnFiles(session, {arguments.script, arguments.junit, arguments.result, arguments.report});
  session.Open(arguments.file);
  UseSourceControl(session, arguments.sourceControl);
  if (arguments.get) RequireInitialisationFile(session);
  Override(session, arguments);

  Program& program = session.program();
  if (frame.streams.animates) {
    const auto terms = TermsInForce(program.window, program.options);
    frame.streams.err << Plain(TermsLine(terms)) << '\n';
  }
  Account account{RunRecord(CheckedProjects(program.window.lvwQueue)),
                  TermsOfRun(program.window, program.options, program.platform.clock)};
  RunRecord& record = account.record;
  std::ostream& lines = frame.json ? frame.streams.err : frame.streams.out;
  RunPrinter printer(frame, lines, program.platform.clock, session.host());
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
    AnnotateFailure(session, event);
  });
  const Subscription warnings =
      program.freshness.told.Connect([&](const std::string& warning) { record.Warn(warning); });
  session.host().ListenForEnd();
  const auto alone = session.BuildAlone();
  const auto refuse = [&](const std::string& reason) {
    record.Warn(reason);
    session.Warn(reason);
    frame.status = Reported(session, arguments, account, ExitStatus::WorkFailed);
  };
  if (session.host().EndWanted()) return refuse("ended on request before the build began");
  if (arguments.check) account.findings = FindingsBefore(session, lines);
  if (account.findings && ErrorsIn(*account.findings) > 0) {
    return refuse("nothing was built, because the check has found errors");
  }
  RequireCompiler(program);
  program.window.menu.mnuFileBuild.Execute();
  session.onIdle = nullptr;
  account.terms.compiler = program.window.compilerPath;

  const RunResult result = record.End().result;
  const bool isRefused = result == RunResult::Refused || result == RunResult::KeptReferences;
  const bool isAnswered = frame.no || frame.streams.asks;
  if (isRefused && !isAnswered) session.Warn("nothing was built: with --yes such a build goes on");
  frame.status =
      Reported(session, arguments, account, StatusOf(record, session.host().EndWanted()));
}

}  // namespace

std::vector<std::string> CheckedProjects(const ListView& queue) {
  std::vector<std::string> paths;
  for (const auto& row : queue.Rows()) {
    if (row->Checked()) paths.push_back(row->SubItem(queue_column::kProject));
  }
  return paths;
}

void AddBuildCommand(CLI::App& app, Frame& frame) {
  CLI::App& command =
      AddJsonCommand(app, frame, "build", "Build the checked projects of the queue");
  auto arguments = std::make_shared<BuildArguments>();
  command.add_option("FILE.bpf", arguments->file, "Build project file")->required();
  AddRunOptions(command, arguments->run, "Build");
  command.add_flag("--all", arguments->run.all, "Build every row of the queue")
      ->excludes("PROJECT.vbp");
  command.add_flag("--get", arguments->get, "Get the latest sources before each project");
  AddSourceControlOptions(command, arguments->sourceControl);
  command.add_flag("--stop-on-error", arguments->stopOnError, "Ask after each failed project");
  command.add_flag("--skip-users-of-failed", arguments->skipUsersOfFailed,
                   "Skip projects that use one that failed");
  auto* outdated =
      command.add_flag("--outdated", arguments->outdated, "Skip projects that are up to date");
  command
      .add_flag("--no-outdated", arguments->upToDateToo,
                "Build them, too, whatever the setting SkipUpToDate says")
      ->excludes(outdated);
  command.add_flag("--check", arguments->check,
                   "Check first as \"gorbex check\" does, and build only without errors");
  AddOutput(command, "--script", arguments->script, "Write the registration script to this file");
  AddOutput(command, "--junit", arguments->junit, "Write a JUnit report to this file");
  AddOutput(command, "--result", arguments->result,
            "Write the result to this file, as --json prints it");
  AddOutput(command, "--report", arguments->report,
            "Write a page about the run to this file (HTML): timeline, failures, findings");
  AddTimeLimit(command, arguments->timeLimit);
  AddAnswers(command, frame);
  command.callback([&frame, arguments] { Build(frame, *arguments); });
}

}  // namespace gorbex::cli
