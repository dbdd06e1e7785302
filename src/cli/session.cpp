#include "cli/session.h"

#include <ostream>

#include "platform/code_page.h"

namespace gorbex::cli {

Session::Session(const Frame& frame) : frame_(frame), pump_(*this), dialogs_(frame) {
  try {
    host_ = frame.makeHost(frame.prefix);
    program_ = std::make_unique<Program>(host_->Services(pump_), dialogs_);
  } catch (const RuntimeError& error) {
    throw Failure(Plain(error.Description()));
  }
  dialogs_.isEnding = [this] { return host_->EndWanted(); };
  dialogs_.fileOf = [this](const std::string& typed) { return FileOf(typed); };
  ListenForProblems();
  hasSettings_ = program_->start.ReadState();
}

void Session::ListenForProblems() {
  const auto warn = [this](const std::string& path, const std::string& reason) {
    Warn(Plain(path) + ": " + Plain(reason));
  };
  subscriptions_.Add(program_->reader.leftOut,
                     [=, this](const std::string& path, const std::string& why) {
                       leftOut_.push_back(path);
                       if (!isQuiet_) warn(path, "left out: " + why);
                     });
  subscriptions_.Add(program_->reader.doubtful,
                     [=, this](const std::string& path, const std::string& why) {
                       if (!isQuiet_) warn(path, why);
                     });
  subscriptions_.Add(program_->buildProject.rowLeftOut, [=](const std::string& path) {
    warn(path, "its row of the queue is left out");
  });
  subscriptions_.Add(program_->replaced.told,
                     [this](const std::string& line) { Warn(Plain(line)); });
  subscriptions_.Add(program_->freshness.told,
                     [this](const std::string& line) { Warn(Plain(line)); });
  subscriptions_.Add(program_->values.failed,
                     [=](const std::string& path, const RuntimeError& error) {
                       warn(path, "not amended: " + error.Description());
                     });
}

void Session::Write(const std::string& typed, const std::string& text) {
  OrFail(typed, [&] { program_->platform.files.Write(ProgramPath(typed), text); });
}

void Session::Warn(const std::string& utf8) const {
  frame_.streams.err << "gorbex: " << utf8 << '\n';
}

std::string Session::ProgramPath(const std::string& typed) const {
  if (typed.empty()) throw Failure("the name of a file or folder is empty");
  try {
    return host_->TypedPath(typed);
  } catch (const RuntimeError& error) {
    if (error.Code() == ErrorNumber::BadFileName) {
      throw Failure(typed +
                    ": holds a character that is not in the system's code page, or in no "
                    "Windows path");
    }
    throw Failure(typed + ": " + Plain(error.Description()));
  }
}

std::optional<std::string> Session::FileOf(const std::string& typed) const {
  try {
    std::string path = host_->TypedPath(typed);
    return FileExists(program_->platform.files, path) ? std::optional(path) : std::nullopt;
  } catch (const RuntimeError&) {
    return std::nullopt;
  }
}

void Session::RequireSettings() const {
  if (hasSettings_) return;
  throw Failure("the stored settings cannot be read; \"gorbex settings NAME VALUE\" replaces one");
}

void Session::Open(const std::string& typedPath) {
  Open(typedPath, BuildProjectFile::Unread::IsKept);
  const auto& missing = program_->buildProject.Missing();
  if (missing.empty()) return;
  std::string text = typedPath + ": project files are missing:";
  for (const std::string& path : missing) text += "\n  " + Plain(path);
  throw Failure(text);
}

void Session::LeaveJudgement() {
  isQuiet_ = true;
  program_->marking.LeaveLoadedUnmarked();
}

void Session::OpenToCheck(const std::string& typedPath) {
  LeaveJudgement();
  Open(typedPath, BuildProjectFile::Unread::IsKept);
}

void Session::Open(const std::string& typedPath, BuildProjectFile::Unread unread) {
  RequireSettings();
  const std::string path = ProgramPath(typedPath);
  opened_ = RequiredBuildProject(path, typedPath);
  if (!program_->buildProject.OpenProject(path, unread)) {
    throw Failure(typedPath + ": the build project could not be loaded");
  }
}

std::string Session::RequiredBuildProject(const std::string& path,
                                          const std::string& typedPath) const {
  std::string text = OrFail(typedPath, [&] { return program_->platform.files.Read(path); });
  if (const auto problem = BuildProjectProblem(text)) throw Failure(typedPath + ": " + *problem);
  return text;
}

std::string Session::LoadedProject(const std::string& typedPath) const {
  std::string path = ProgramPath(typedPath);
  const MemberCollection& members = program_->window.ProjectMembers;
  if (members.Contains(path)) return path;
  for (const auto& member : members) {
    if (EqualsIgnoringCase(member->path, path)) return member->path;
  }
  throw Failure(typedPath + ": not a project of this build project");
}

std::shared_ptr<void> Session::BuildAlone() const {
  auto turn = program_->work.TakeTurn();
  if (turn == nullptr) Warn("another build is running; waiting for its end");
  while (turn == nullptr && !host_->EndWanted()) {
    host_->Wait(std::chrono::milliseconds(100));
    turn = program_->work.TakeTurn();
  }
  return turn;
}

std::shared_ptr<void> Session::ChangeAlone() const {
  return host_->ChangeAlone(
      [this] { Warn("another program is changing it; waiting for its end"); });
}

void Session::EndStepOnRequest() {
  const Work& work = program_->work;
  const bool isClientAtWork = work.Goes(Task::SourceControl) || work.Goes(Task::Login);
  if (hasEndedStep_ || !host_->EndWanted() || !isClientAtWork) return;
  hasEndedStep_ = true;
  throw RuntimeError::WithDescription(ErrorNumber::AutomationError, "Ended on request");
}

void Session::Save() {
  const std::string& file = program_->window.fileName;
  if (!leftOut_.empty()) {
    throw Failure(Plain(file) + ": not saved, because " + std::to_string(leftOut_.size()) +
                  " project(s) of it could not be read and would be lost from it");
  }
  if (program_->platform.files.Read(file) != opened_) {
    throw Failure(Plain(file) + ": not saved, because another program has changed it meanwhile");
  }
  if (!program_->buildProject.SaveProject(file)) throw Failure(Plain(file) + ": not saved");
}

}  // namespace gorbex::cli
