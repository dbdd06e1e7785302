#include "build/compile.h"

#include <utility>

#include "build/program_argument.h"
#include "core/file_tools.h"
#include "core/text.h"

namespace gorbex {
namespace {

constexpr std::string_view kResultLog = "VBResult.log";
constexpr std::string_view kOwnTurn = "Another project is being compiled";
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

std::string Compile::QuotedResultLog() const {
  return Quoted(JoinPath(uses_.programFolder, kResultLog));
}

std::string Compile::LastResult() const {
  if (!problem_.empty()) return {};
  try {
    return uses_.files.Read(JoinPath(uses_.programFolder, kResultLog));
  } catch (const RuntimeError&) {
    return {};
  }
}

void Compile::AskForCompiler() {
  if (!uses_.window.compilerPath.empty()) return;
  uses_.dialogs.Show({"You need to specify a VB path"});
  uses_.compiler.Find();
}

std::string Compile::CommandLine(const std::string& folder, const std::string& projectPath) const {
  const frmBuilder& window = uses_.window;
  std::string command =
      window.compilerPath + " " + Quoted(projectPath) + " /make /out " + window.resultLogPath;
  if (!folder.empty()) command += " /outdir " + Quoted(folder);
  return command;
}

// A result left over from an earlier compile must never be taken for this one's.
void Compile::RemoveStaleLog() {
  const std::string path = JoinPath(uses_.programFolder, kResultLog);
  Procedure::IgnoringErrors().Run([&](Procedure& on) {
    if (!on([&] { return FileExists(uses_.files, path); })) return;
    on([&] { uses_.files.SetAttributes(path, file_attribute::kNormal); });
    on([&] { uses_.files.Remove(path); });
  });
}

std::shared_ptr<void> Compile::BeginBuild() {
  return Begin(Task::Build, uses_.work.MayBuild());
}

std::shared_ptr<void> Compile::Begin(Task task, bool isFree) {
  auto begun = isFree ? uses_.work.BeginAlone(task) : nullptr;
  if (begun == nullptr) uses_.window.SetStatus(isFree ? kOthersTurn : kOwnTurn);
  return begun;
}

bool Compile::CompileProject(const std::string& projectPath, const std::string& outDir) {
  return CompileInto(outDir.empty() ? uses_.window.buildDirectory : outDir, projectPath);
}

bool Compile::CompileInPlace(const std::string& projectPath) {
  return CompileInto("", projectPath);
}

bool Compile::CompileInto(const std::string& folder, const std::string& projectPath) {
  const bool isFree = !uses_.work.Goes(Task::Compile);
  const auto compile = Begin(Task::Compile, isFree);
  if (compile == nullptr) {
    if (isFree) problem_ = kOthersTurn;
    return false;
  }
  Procedure::IgnoringErrors().Run([&](Procedure& on) { on([&] { AskForCompiler(); }); });
  uses_.window.resultLogPath = QuotedResultLog();
  RemoveStaleLog();
  resultLogProject_ = projectPath;
  problem_.clear();
  const bool succeeded = Attempt(folder, projectPath);
  ended.Emit({projectPath, succeeded, LastResult(), problem_});
  return succeeded;
}

bool Compile::Attempt(const std::string& folder, const std::string& projectPath) {
  if (uses_.window.compilerPath.empty()) {
    problem_ = "there is no compiler";
    return false;
  }
  try {
    return Compiled(folder, projectPath);
  } catch (const RuntimeError& error) {
    problem_ = error.Description();
    return false;
  }
}

bool Compile::Compiled(const std::string& folder, const std::string& projectPath) {
  if (IsGone(projectPath, uses_.window.ProjectMembers, uses_.files)) {
    throw RuntimeError(ErrorNumber::FileNotFound, projectPath);
  }
  static_cast<void>(uses_.window.ProjectMembers.Item(projectPath));
  RequireFileArgument(projectPath);
  RequireArgument(folder);
  const std::string log = JoinPath(uses_.programFolder, kResultLog);
  if (FileExists(uses_.files, log)) throw RuntimeError(ErrorNumber::PathFileAccess, log);
  auto taken = uses_.freshness.Take(projectPath, folder);
  if (uses_.shell.RunAndWait(CommandLine(folder, projectPath)) == Shell::Ended::ByUs) {
    problem_ = "the compiler was ended before it was done";
    return false;
  }
  const bool succeeded = CheckLogFile(uses_.window.resultLogPath, projectPath);
  if (succeeded) uses_.freshness.Note(std::move(taken));
  return succeeded;
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
