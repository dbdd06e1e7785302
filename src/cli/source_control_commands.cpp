#include <algorithm>
#include <ostream>
#include <utility>
#include <vector>

#include "cli/commands.h"
#include "cli/json_views.h"
#include "cli/session.h"
#include "cli/source_control_options.h"
#include "cli/text_output.h"
#include "core/text.h"
#include "scc/label_dialog.h"
#include "scc/session_settings.h"

namespace gorbex::cli {
namespace {

/// The arguments that all source-control commands take.
struct SourceControlCommandsArguments {
  std::string file;
  std::vector<std::string> projects;
  SourceControlOptions sourceControl;
  std::string label;
  std::string comment;
  std::string spec;
};

// Stores them as the closing window does: the next command, or window, begins with them.
void Remember(const Session& session, Program& program) {
  const auto alone = session.ChangeAlone();
  program.registry.subSetRegistryValue(kProgramKey, session_setting::kIniPath,
                                       program.window.IniPath);
  program.registry.subSetRegistryValue(kProgramKey, session_setting::kUser,
                                       program.window.UserName);
}

// Failure when the database does not open: no command can do its work then.
void LogIn(Session& session, const SourceControlCommandsArguments& arguments) {
  Program& program = session.program();
  UseSourceControl(session, arguments.sourceControl);
  RequireInitialisationFile(session);
  program.session.LoginToSourceSafe();
  if (session.host().EndWanted()) throw Failure("ended on request", ExitStatus::WorkFailed);
  if (!program.session.LoggedIn()) throw Failure("the source-control database could not be opened");
  if (arguments.sourceControl.IsAny()) Remember(session, program);
}

// Before the client is at work, where a user may be asked, the system's wish ends the program as
// ever.
void EndOnRequest(Session& session) {
  session.onIdle = [&session, isListening = false]() mutable {
    if (!std::exchange(isListening, true)) session.host().ListenForEnd();
    session.EndStepOnRequest();
  };
}

std::vector<std::string> Chosen(const Session& session, const Program& program,
                                const SourceControlCommandsArguments& arguments) {
  std::vector<std::string> paths;
  paths.reserve(program.window.ProjectMembers.Count());
  for (const auto& typed : arguments.projects) paths.push_back(session.LoadedProject(typed));
  if (!paths.empty()) return paths;
  for (const auto& member : program.window.ProjectMembers) paths.push_back(member->path);
  return paths;
}

/// The output of `get`, and its exit status.
class GetReport {
 public:
  explicit GetReport(Frame& frame) : frame_(frame) {}

  void Add(const std::string& path, const LatestResult& result) {
    const bool done = result.Succeeded();
    if (!done) frame_.status = ExitStatus::WorkFailed;
    const bool isControlled = result.kind != LatestResult::Kind::NotControlled;
    const std::string reason = isControlled ? result.problem : "not under source control";
    results_.push_back({{"path", JsonText(path)}, {"done", done}, {"reason", JsonText(reason)}});
    if (frame_.json) return;
    std::ostream& out = frame_.streams.out;
    out << (!done          ? "FAILED  "
            : isControlled ? "got     "
                           : "-       ")
        << Plain(path) << (isControlled ? "\n" : ": " + reason + "\n");
    // One refusal of the database often concerns every project.
    if (!done && reason != told_) out << Indented(reason);
    if (!done) told_ = reason;
  }

  void End() {
    if (frame_.json) PrintJson(frame_, results_);
  }

 private:
  Frame& frame_;
  Json results_ = Json::array();
  std::string told_;
};

// They count as done, and a scan says nothing of them.
void TellPassedOver(const Session& session, const Program& program,
                    const std::vector<std::string>& paths) {
  const auto count = std::count_if(paths.begin(), paths.end(), [&](const std::string& path) {
    return program.window.ProjectMembers.Item(path).VSSProject.empty();
  });
  if (count == 0) return;
  session.Warn(Counted(static_cast<std::size_t>(count), "project is", "projects are") +
               " passed over: not under source control");
}

// Failure when it is not said what to label, and the first project does not say it either.
std::string SpecToLabel(const Program& program, const std::string& typed) {
  if (!typed.empty()) return InCodePage(typed);
  const auto& members = program.window.ProjectMembers;
  if (members.Count() > 0 && !(*members.begin())->VSSProject.empty()) {
    return (*members.begin())->VSSProject;
  }
  throw Failure(members.Count() == 0
                    ? "the build project has no projects: --spec names what to label"
                    : Plain((*members.begin())->path) +
                          ": the first project is not under source control: --spec names what to "
                          "label");
}

void Get(Frame& frame, const SourceControlCommandsArguments& arguments) {
  Session session(frame);
  session.Open(arguments.file);
  EndOnRequest(session);
  LogIn(session, arguments);
  Program& program = session.program();
  const auto batch = program.latest.BeginBatch();
  GetReport report(frame);
  if (program.window.ProjectMembers.Count() == 0) session.Warn("the build project has no projects");
  const auto paths = Chosen(session, program, arguments);
  TellPassedOver(session, program, paths);
  for (const auto& path : paths) {
    if (session.host().EndWanted()) break;
    program.log.WriteLog("Getting Latest for " + path);
    const LatestResult result = program.latest.GetLatestForProject(path);
    if (!result.toDo.empty()) session.Warn(Plain(result.toDo));
    report.Add(path, result);
  }
  report.End();
}

void Changes(Frame& frame, const SourceControlCommandsArguments& arguments) {
  Session session(frame);
  session.OpenToLook(arguments.file);
  EndOnRequest(session);
  LogIn(session, arguments);
  Program& program = session.program();
  const auto listening =
      program.changes.notCompared.Connect([&](const std::string& path, const std::string& reason) {
        session.Warn(Plain(path) + ": not compared: " + Plain(reason));
        frame.status = ExitStatus::WorkFailed;
      });
  TellPassedOver(session, program, Chosen(session, program, arguments));
  program.changes.mnuToolsHighlight_Click();
  Json changed = Json::array();
  for (const TreeNode* node : program.window.ProjectNodes()) {
    if (node->ImageOf() != Image::ProjectWarning) continue;
    changed.push_back(JsonText(node->Text()));
    if (!frame.json) frame.streams.out << Plain(node->Text()) << '\n';
  }
  if (frame.json) PrintJson(frame, changed);
}

void Label(Frame& frame, const SourceControlCommandsArguments& arguments) {
  if (arguments.label.empty() || arguments.comment.empty()) {
    throw Failure("a label needs a text and a comment");
  }
  Session session(frame);
  session.Open(arguments.file);
  Program& program = session.program();
  const std::string spec = SpecToLabel(program, arguments.spec);
  EndOnRequest(session);
  LogIn(session, arguments);
  frmLabel form;
  LabelDialog dialog(form, program.session, program.dialogs, program.report);
  form.txtComment.text.Set(InCodePage(arguments.comment));
  form.txtLabel.text.Set(InCodePage(arguments.label));
  dialog.Display(spec);
  const bool done = form.hidden.Get();
  if (!done) frame.status = ExitStatus::WorkFailed;
  if (frame.json) {
    PrintJson(frame, {{"spec", JsonText(spec)}, {"done", done}});
  } else if (done) {
    frame.streams.out << "labelled " << Plain(spec) << " as " << arguments.label << '\n';
  }
}

using Work = void (*)(Frame&, const SourceControlCommandsArguments&);

CLI::App& Add(CLI::App& app, Frame& frame, const char* name, const char* description,
              const std::shared_ptr<SourceControlCommandsArguments>& arguments, Work work) {
  CLI::App& command = AddJsonCommand(app, frame, name, description);
  command.add_option("FILE.bpf", arguments->file, "Build project file")->required();
  AddSourceControlOptions(command, arguments->sourceControl);
  AddAnswers(command, frame);
  command.callback([&frame, arguments, work] { work(frame, *arguments); });
  return command;
}

}  // namespace

void AddSourceControlCommands(CLI::App& app, Frame& frame) {
  auto get = std::make_shared<SourceControlCommandsArguments>();
  Add(app, frame, "get", "Get the latest sources of projects", get, Get)
      .add_option("PROJECT.vbp", get->projects, "Only these projects");
  Add(app, frame, "changes", "Name the projects whose sources differ from the database",
      std::make_shared<SourceControlCommandsArguments>(), Changes);
  auto label = std::make_shared<SourceControlCommandsArguments>();
  CLI::App& command = Add(app, frame, "label", "Label a project in the database", label, Label);
  command.add_option("LABEL", label->label, "The label's text")->required();
  command.add_option("-m,--comment", label->comment, "The label's comment")->required();
  command.add_option("--spec", label->spec,
                     "What to label (\"$/...\"), instead of the first project's");
}

}  // namespace gorbex::cli
