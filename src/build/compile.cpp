#include "build/compile.h"

#include <utility>

#include "build/program_argument.h"
#include "core/file_tools.h"
#include "core/text.h"

namespace gorbex {
namespace {

constexpr std::string_view kResultLog = "VBResult.log";
// Windows of the program, reports and build servers get no more of one compiler's words.
constexpr std::size_t kMostWords = std::size_t{64} * 1024;
constexpr std::string_view kOwnTurn = "Another project is being compiled";
constexpr std::string_view kEnded = "the compiler was ended before it was done";
constexpr std::string_view kOthersTurn = "Another program is building; try again when it is done";

std::string Quoted(std::string_view text) {
  return std::string("\"").append(text).append("\"");
}

}  // namespace

bool IsGone(const std::string& path, const MemberCollection& members, const FileReader& files) {
  return !members.Contains(path) && !FileExists(files, path);
}

Compile::Compile(const Uses& uses)
    : uses_(uses), report_(uses.dialogs, [this](const std::string& line) {
        problem_ = "the compiler wrote no result log that can be read";
        uses_.log.WriteLog(line);
      }) {}

std::string Compile::ResultLog(std::size_t place) const {
  std::string name(kResultLog);
  if (place > 1) name.insert(name.find('.'), "-" + std::to_string(place));
  return JoinPath(uses_.programFolder, name);
}

std::string Compile::QuotedResultLog() const {
  return Quoted(ResultLog(1));
}

void Compile::AskForCompiler() {
  if (!uses_.window.compilerPath.empty()) return;
  uses_.dialogs.Show({"You need to specify a VB path"});
  uses_.compiler.Find();
}

std::string Compile::CommandLine(const Going& going, const std::string& folder) const {
  std::string command = uses_.window.compilerPath + " " + Quoted(going.result_.path) +
                        " /make /out " + Quoted(going.resultLog_);
  if (!folder.empty()) command += " /outdir " + Quoted(folder);
  return command;
}

// A result left over from an earlier compile must never be taken for this one's.
void Compile::RemoveStaleLog(const std::string& resultLog) {
  Procedure::IgnoringErrors().Run([&](Procedure& on) {
    if (!on([&] { return FileExists(uses_.files, resultLog); })) return;
    on([&] { uses_.files.SetAttributes(resultLog, file_attribute::kNormal); });
    on([&] { uses_.files.Remove(resultLog); });
  });
}

std::shared_ptr<void> Compile::BeginBuild() {
  return Begin(Task::Build, uses_.work.MayBuild());
}

std::shared_ptr<void> Compile::Begin(Task task, bool isFree) {
  auto begun = isFree ? uses_.work.BeginAlone(task) : nullptr;
  if (begun != nullptr) return begun;
  problem_ = isFree ? kOthersTurn : kOwnTurn;
  uses_.window.SetStatus(problem_);
  return begun;
}

bool Compile::CompileProject(const std::string& projectPath, const std::string& outDir) {
  return CompileInto(outDir.empty() ? uses_.window.buildDirectory : outDir, projectPath);
}

bool Compile::CompileInPlace(const std::string& projectPath) {
  return CompileInto("", projectPath);
}

bool Compile::CompileInto(const std::string& folder, const std::string& projectPath) {
  auto task = Begin(Task::Compile, !uses_.work.Goes(Task::Compile));
  Going going = Begin(std::move(task), projectPath, folder, 1);
  if (going.program_ != nullptr) uses_.shell.Wait(*going.program_);
  const CompileEnded result = Finish(std::move(going));
  problem_ = result.problem;
  return result.succeeded;
}

Compile::Going Compile::Start(const std::string& projectPath, std::size_t place) {
  auto task = runTask_.lock();
  if (task == nullptr) task = Begin(Task::Compile, !uses_.work.Goes(Task::Compile));
  runTask_ = task;
  return Begin(std::move(task), projectPath, uses_.window.buildDirectory, place);
}

Compile::Going Compile::Begin(std::shared_ptr<void> task, const std::string& projectPath,
                              const std::string& folder, std::size_t place) {
  Going going;
  going.result_.path = projectPath;
  going.task_ = std::move(task);
  if (going.task_ == nullptr) {
    going.result_.problem = problem_;
    return going;
  }
  Procedure::IgnoringErrors().Run([&](Procedure& on) { on([&] { AskForCompiler(); }); });
  going.resultLog_ = ResultLog(place);
  RemoveStaleLog(going.resultLog_);
  if (place == 1) {
    uses_.window.resultLogPath = Quoted(going.resultLog_);
    resultLogProject_ = projectPath;
  }
  try {
    Launch(going, folder);
  } catch (const RuntimeError& error) {
    going.result_.problem = error.Description();
  }
  return going;
}

void Compile::Launch(Going& going, const std::string& folder) {
  const std::string& project = going.result_.path;
  if (uses_.window.compilerPath.empty()) {
    going.result_.problem = "there is no compiler";
    return;
  }
  if (IsGone(project, uses_.window.ProjectMembers, uses_.files)) {
    throw RuntimeError(ErrorNumber::FileNotFound, project);
  }
  static_cast<void>(uses_.window.ProjectMembers.Item(project));
  RequireFileArgument(project);
  RequireArgument(folder);
  if (FileExists(uses_.files, going.resultLog_)) {
    throw RuntimeError(ErrorNumber::PathFileAccess, going.resultLog_);
  }
  going.taken_ = uses_.freshness.Take(project, folder);
  going.program_ = uses_.shell.Start(CommandLine(going, folder));
  if (going.program_ == nullptr) going.result_.problem = kEnded;
}

bool Compile::Going::HasEnded(std::chrono::milliseconds patience) const {
  return program_ == nullptr || program_->HasEnded(patience).has_value();
}

CompileEnded Compile::Finish(Going going) {
  CompileEnded& result = going.result_;
  if (going.task_ == nullptr) return result;
  try {
    if (going.program_ != nullptr) Judge(going);
  } catch (const RuntimeError& error) {
    result.problem = error.Description();
  }
  if (result.problem.empty()) result.log = ReadOrEmpty(uses_.files, going.resultLog_);
  if (!result.succeeded) {
    result.failure = PlaceOfFailure(uses_.files, result.path, result.log, result.problem);
  }
  result.log = Shortened(result.log, kMostWords);
  ended.Emit(result);
  return result;
}

void Compile::Judge(Going& going) {
  CompileEnded& result = going.result_;
  if (going.program_->HasEnded({}) == Shell::Ended::ByUs) {
    result.problem = kEnded;
    return;
  }
  problem_.clear();
  result.succeeded = CheckLogFile(Quoted(going.resultLog_), result.path);
  result.problem = problem_;
  if (result.succeeded) uses_.freshness.Note(std::move(going.taken_));
}

bool Compile::CheckLogFile(const std::string& logPath, const std::string& projectPath) {
  bool result = false;
  Procedure(report_, ": frmBuilder.CheckLogFile").Run([&](Procedure& on) {
    const std::string text = on([&] { return uses_.files.Read(WithoutQuotes(logPath)); });
    const auto built = FindIgnoringCase(text, "build of");
    if (built == std::string_view::npos) return;
    result = FindIgnoringCase(text, "failed.", built + 1) == std::string_view::npos;
    if (result) return;
    TextBox& box = uses_.window.txtLogFile;
    std::string shown = box.text.Get();
    shown.append(projectPath).append(kLineBreak);
    shown.append(projectPath.size(), '=').append(kLineBreak);
    shown.append(text).append(kLineBreak);
    on([&] { box.text.Set(std::move(shown)); });
  });
  return result;
}

}  // namespace gorbex
