#include "build/build_run.h"

#include <algorithm>
#include <utility>
#include <vector>

#include "core/list_columns.h"
#include "core/text.h"
#include "platform/code_page.h"

namespace gorbex {
namespace {

constexpr std::string_view kOptimizationKey = "OptimizationType";
constexpr std::string_view kDebugInfoKey = "CodeViewDebugInfo";
constexpr std::int32_t kNotOptimized = 2;
constexpr std::int32_t kWithDebugInfo = -1;

std::string DoneText(std::int32_t built, std::int32_t upToDate) {
  if (upToDate == 0) return "Built " + std::to_string(built) + " components.";
  const std::string rest = std::to_string(upToDate) + (upToDate == 1 ? " is" : " are");
  return "Built " + std::to_string(built) + " components; " + rest + " up to date.";
}

}  // namespace

/// The debug values of one project. The replaced values are written back when the project is done,
/// and also when an error ends the run in its midst.
class BuildRun::DebugBuild {
 public:
  DebugBuild(BuildRun& run, const std::string& path) : run_(run), path_(path) {}
  ~DebugBuild() {
    Procedure::IgnoringErrors().Run([this](Procedure& on) { Undo(on); });
  }
  DebugBuild(const DebugBuild&) = delete;
  DebugBuild& operator=(const DebugBuild&) = delete;

  void Set(Procedure& on) { replaced_ = run_.SetDebugValues(on, path_); }

  void Undo(Procedure& on) {
    const auto replaced = std::exchange(replaced_, std::nullopt);
    if (replaced) run_.WriteBack(on, path_, *replaced);
  }

 private:
  BuildRun& run_;
  const std::string& path_;
  std::optional<DebugValues> replaced_;
};

void BuildRun::mnuFileBuild_Click() {
  const auto turn = uses_.compile.BeginBuild();
  if (turn == nullptr) return;
  const auto start = uses_.clock.Elapsed();
  Counters counters;
  auto task = uses_.work.Begin(Task::Run);
  mayEmpty_ = false;
  gets_ = {};
  RunResult result = RunResult::Aborted;
  const Subscription questions = uses_.dialogs.asking.Connect([&](const Message& message) {
    questionTime_.Asked();
    events.Emit(QuestionAsked{message});
  });
  const Subscription answers =
      uses_.dialogs.answered.Connect([&](const Message& message, Answer answer) {
        questionTime_.Answered();
        events.Emit(QuestionAnswered{message, answer});
      });
  unamended_.clear();
  const Subscription failures = uses_.values.failed.Connect(
      [&](const std::string& path, const RuntimeError&) { NoteUnamended(path); });
  Procedure(uses_.report, ": frmBuilder.mnuFileBuild_Click").Run([&](Procedure& on) {
    result = Run(on, counters);
  });
  if (result == RunResult::Aborted) RecoverFromAbort();
  if (!unamended_.empty() && !uses_.work.Ends()) TellUnamended();
  task.reset();
  events.Emit(RunEnded{result, counters.built, counters.errors, uses_.clock.Elapsed() - start,
                       unamended_, counters.upToDate});
}

void BuildRun::mnuFileStop_Click() {
  Work& work = uses_.work;
  const bool isLaunched = work.Goes(Task::TestProject);
  if (work.Goes(Task::Run) && !work.RunStops()) {
    work.StopAfterThis();
    uses_.window.SetStatus(
        isLaunched ? "Nothing is stopped: the build is done, and the test project is running"
                   : "Stopping after this project");
    return;
  }
  if (!work.Goes(Task::Program)) return;
  const Answer answer =
      uses_.dialogs.Show({isLaunched ? "The test project is still running. End it now?"
                                     : "The compiler is still running. End it now?",
                          Buttons::YesNo, MessageIcon::Exclamation});
  if (answer == Answer::Yes) uses_.shell.TerminateAll();
}

void BuildRun::End() {
  uses_.work.EndNow();
  uses_.shell.TerminateAll();
}

RunResult BuildRun::Run(Procedure& on, Counters& counters) {
  frmBuilder& window = uses_.window;
  on([&] { window.tmrOutlook.enabled.Set(false); });
  on([&] { uses_.log.WriteLog("Build Started"); });
  on([&] { uses_.compile.AskForCompiler(); });
  const bool incompatible = ResetIcons(on);
  if (!uses_.options.ChangeRefs && incompatible && !on([&] { return AskAboutCompatibility(); })) {
    on([&] { RestoreMailTimer(); });
    return RunResult::Refused;
  }
  const bool compiles = !window.compilerPath.empty();
  if (compiles && uses_.options.ChangeRefs && !on([&] { return MayEmptyReferences(); })) {
    on([&] { RestoreMailTimer(); });
    return RunResult::KeptReferences;
  }
  on([&] { window.menu.mnuFileBuild.enabled.Set(false); });
  window.resultLogPath = uses_.compile.QuotedResultLog();
  on([&] { window.mousePointer.Set(MousePointer::Hourglass); });
  if (compiles) BuildQueueRows(on, counters);
  TellOfLatest(on);
  Summarise(on, counters);
  on([&] { window.SetStatus("Build Process finished"); });
  on([&] { window.menu.mnuFileBuild.enabled.Set(true); });
  on([&] { window.mousePointer.Set(MousePointer::Default); });
  on([&] {
    uses_.log.WriteLog(counters.errors >= 1 ? "Build Finished with errors."
                                            : "Build Finished succesfully.");
  });
  on([&] { RestoreMailTimer(); });
  return compiles ? RunResult::Finished : RunResult::NoCompiler;
}

void BuildRun::RecoverFromAbort() {
  frmBuilder& window = uses_.window;
  window.menu.mnuFileBuild.enabled.Set(true);
  window.mousePointer.Set(MousePointer::Default);
  const bool isMailOff =
      window.menu.mnuToolsInBox.checked.Get() && !window.tmrOutlook.enabled.Get();
  window.SetStatus(isMailOff ? "Build aborted; the remaining projects stayed as they were, and the "
                               "inbox is not checked until Check Inbox is switched off and on"
                             : "Build aborted; the remaining projects stayed as they were");
}

void BuildRun::RestoreMailTimer() {
  frmBuilder& window = uses_.window;
  window.tmrOutlook.enabled.Set(window.menu.mnuToolsInBox.checked.Get());
}

// True when a checked row is marked as not compatible.
bool BuildRun::ResetIcons(Procedure& on) {
  bool incompatible = false;
  for (const auto& row : uses_.window.lvwQueue.Rows()) {
    on([&] { row->SetIcon(Image::VbProject); });
    row->SetNote("");
    incompatible = incompatible || (row->Checked() &&
                                    row->SubItem(queue_column::kCompatibility).starts_with("NOT"));
  }
  return incompatible;
}

bool BuildRun::AskAboutCompatibility() {
  std::string question = "You are attempting to build files which DO NOT have compatability set.";
  question.append(kLineBreak)
      .append("If you have other components referencing these then they WILL NOT work.")
      .append(kLineBreak)
      .append("Do you wish to continue with your build?");
  return uses_.dialogs.Show({question, Buttons::YesNo, MessageIcon::CriticalStop,
                             std::string(kApplicationTitle)}) == Answer::Yes;
}

// Before the run: what it would build itself is still to come.
bool BuildRun::MayEmptyReferences() {
  const frmBuilder& window = uses_.window;
  const bool isBuiltThere = window.buildDirectory.ends_with('\\');
  const auto isComing = [&](const std::string& path) {
    const ListRow* row = isBuiltThere ? window.lvwQueue.Find(path) : nullptr;
    return row != nullptr && row->Checked();
  };
  std::vector<std::string> lost;
  for (const auto& row : window.lvwQueue.Rows()) {
    if (!row->Checked()) continue;
    const std::string& path = row->SubItem(1);
    for (const auto& file : uses_.references.ComponentsWithoutIdentity(path, isComing)) {
      lost.push_back(std::string(path).append(": ").append(file));
    }
  }
  if (lost.empty()) return true;
  mayEmpty_ = AskToEmpty(lost, "Do you wish to continue with your build?");
  return mayEmpty_;
}

// In the run: a project above may have failed.
bool BuildRun::MayEmptyReferences(const std::string& path) {
  if (mayEmpty_ || uses_.work.Ends()) return mayEmpty_;
  auto lost = uses_.references.ComponentsWithoutIdentity(path, [](const auto&) { return false; });
  for (std::string& file : lost) file.insert(0, path + ": ");
  return lost.empty() || AskToEmpty(lost, "Do you wish to update this project's references?");
}

bool BuildRun::AskToEmpty(const std::vector<std::string>& references, std::string_view question) {
  std::string text = "The references to these components would lose their identities, because ";
  text.append("no built component with one is found there:").append(kLineBreak).append(kLineBreak);
  text.append(ShortList(references)).append(kLineBreak).append(question);
  return uses_.dialogs.Show({text, Buttons::YesNo, MessageIcon::Exclamation}) == Answer::Yes;
}

void BuildRun::BuildQueueRows(Procedure& on, Counters& counters) {
  frmBuilder& window = uses_.window;
  on([&] { window.txtLogFile.text.Set(""); });
  on([&] { uses_.script.Begin(); });
  const auto& rows = window.lvwQueue.Rows();
  const auto checked = static_cast<std::size_t>(
      std::count_if(rows.begin(), rows.end(), [](const auto& row) { return row->Checked(); }));
  events.Emit(RunStarted{checked});
  const std::size_t count = window.lvwQueue.Count();
  std::size_t number = 0;
  usersOfFailed_.reset();
  uses_.freshness.LookAgain();
  const auto batch = uses_.latest.BeginBatch();
  for (std::size_t i = 1; i <= count && !uses_.work.RunStops(); ++i) {
    const ListRow* row = on([&] { return &window.lvwQueue.At(i); });
    if (row == nullptr || !row->Checked()) continue;
    const std::string path = row->SubItem(queue_column::kProject);
    if (Skips(on, path, ++number, checked)) continue;
    events.Emit(ProjectStarted{path, number, checked});
    if (BuildProject(on, path, counters) == Pass::Stop) break;
  }
  on([&] { uses_.script.End(); });
  on([&] { window.menu.mnuFileGenScript.enabled.Set(true); });
}

bool BuildRun::Skips(Procedure& on, const std::string& path, std::size_t number, std::size_t of) {
  if (!uses_.options.SkipUsersOfFailed || !usersOfFailed_) return false;
  const ProjectSkipped skipped{path, number, of, usersOfFailed_->FailedUseOf(path)};
  if (skipped.failed.empty()) return false;
  on([&] { uses_.log.WriteLog("Skipped " + path + ": " + ReasonOf(skipped)); });
  events.Emit(skipped);
  return true;
}

void BuildRun::NoteFailed(const std::string& path) {
  if (!usersOfFailed_) usersOfFailed_.emplace(uses_.window.ProjectMembers, uses_.group);
  usersOfFailed_->Add(path);
}

ListRow& BuildRun::RowOf(const std::string& path) const {
  ListRow* row = uses_.window.lvwQueue.Find(path);
  if (row == nullptr) throw RuntimeError(ErrorNumber::ElementNotFound, path);
  return *row;
}

BuildRun::Pass BuildRun::BuildProject(Procedure& on, const std::string& path, Counters& counters) {
  frmBuilder& window = uses_.window;
  const auto start = WorkingTime();
  on([&] { RowOf(path).SetIcon(Image::Building); });
  on([&] { RowOf(path).EnsureVisible(); });
  on([&] { window.lvwQueue.Refresh(); });
  on([&] { window.SetStatus("Building " + path); });
  const bool isGone = IsGone(path, window.ProjectMembers, uses_.files);
  const std::string exeName =
      on([&] { return isGone ? "" : window.ProjectMembers.Item(path).EXEName; });

  if (!isGone && uses_.options.GetLatest) GetLatest(on, path);
  if (!isGone && SkipsUpToDate(on, path, exeName, counters)) return Pass::GoOn;
  DebugBuild debug(*this, path);
  if (!isGone) Prepare(on, path, debug);
  events.Emit(StepStarted{path, BuildStep::Compile});
  const bool succeeded = on([&] { return uses_.compile.CompileProject(path, ""); });
  on([&] {
    uses_.log.WriteLog(std::string("Build was ") + (succeeded ? "Succesfull" : "Unsuccesfull"));
  });
  on([&] { uses_.events.DoEvents(); });
  Record(on, path, exeName, succeeded, counters);
  if (!succeeded) NoteFailed(path);
  debug.Undo(on);
  events.Emit(ProjectCompiled{path, succeeded, WorkingTime() - start, uses_.compile.LastResult(),
                              uses_.compile.LastProblem()});
  if (succeeded || uses_.work.Ends() || !uses_.options.StopProcessing) return Pass::GoOn;
  return on([&] { return AskToGoOn(path); }) ? Pass::GoOn : Pass::Stop;
}

// Its component belongs into the registration script as those that are built do.
bool BuildRun::SkipsUpToDate(Procedure& on, const std::string& path, const std::string& exeName,
                             Counters& counters) {
  if (!uses_.options.SkipUpToDate || uses_.work.Ends()) return false;
  const Judgement judgement = uses_.freshness.JudgeInRun(path);
  on([&] { RowOf(path).SetNote(NoteOf(judgement)); });
  if (!judgement.IsUpToDate()) return false;
  ++counters.upToDate;
  on([&] { RowOf(path).SetIcon(Image::UpToDate); });
  on([&] { uses_.script.AddComponent(uses_.window.buildDirectory, exeName); });
  on([&] { uses_.log.WriteLog("Skipped " + path + ": it is up to date"); });
  events.Emit(ProjectUpToDate{path, judgement.since});
  return true;
}

std::chrono::milliseconds BuildRun::WorkingTime() const {
  return uses_.clock.Elapsed() - questionTime_.Total();
}

void BuildRun::Prepare(Procedure& on, const std::string& path, DebugBuild& debug) {
  const clsOptions& options = uses_.options;
  if (uses_.work.Ends()) return;
  if (!options.Compatible) {
    events.Emit(StepStarted{path, BuildStep::Compatibility});
    on([&] { uses_.log.WriteLog("Breaking compatability on " + path); });
    on([&] { uses_.values.WriteProjectValue(path, "CompatibleMode", "\"0\""); });
  }
  if (DebugBuildIsOn()) debug.Set(on);
  if (options.ChangeRefs) UpdateReferences(on, path);
  if (!options.VersionComponents.empty()) {
    events.Emit(StepStarted{path, BuildStep::Version});
    uses_.version.Stamp(on, path);
  }
}

void BuildRun::UpdateReferences(Procedure& on, const std::string& path) {
  events.Emit(StepStarted{path, BuildStep::References});
  if (!on([&] { return MayEmptyReferences(path); })) {
    on([&] { uses_.log.WriteLog("References of " + path + " left as they are"); });
    return;
  }
  const bool isUpdated = on([&] { return uses_.references.UpdateProjectReferences(path); });
  if (!isUpdated) NoteUnamended(path);
  on([&] { uses_.log.WriteLog("Updating References on " + path); });
}

void BuildRun::GetLatest(Procedure& on, const std::string& path) {
  events.Emit(StepStarted{path, BuildStep::Latest});
  on([&] { uses_.log.WriteLog("Getting latest " + path + " code"); });
  const LatestResult got = on([&] { return uses_.latest.GetLatestForProject(path); });
  gets_.Add(path, got);
  events.Emit(LatestGot{path, got});
  if (!got.Succeeded()) {
    on([&] {
      uses_.log.WriteLog("Failed to get latest " + path + " code: " + OnOneLine(got.problem));
    });
  }
  on([&] { uses_.window.SetStatus("Building " + path); });
}

bool BuildRun::DebugBuildIsOn() const {
  return EqualsIgnoringCase(uses_.options.DebugBuild, "true");
}

BuildRun::DebugValues BuildRun::SetDebugValues(Procedure& on, const std::string& path) {
  events.Emit(StepStarted{path, BuildStep::Debug});
  const auto read = [&](std::string_view key) { return on([&] { return DebugValue(path, key); }); };
  const DebugValues kept{read(kOptimizationKey), read(kDebugInfoKey)};
  DebugValues wanted;
  std::vector<ReplacedValue> replaced;
  const auto replace = [&](std::string_view key, std::optional<std::int32_t> before,
                           std::int32_t during) {
    if (before) replaced.push_back({std::string(key), *before, during});
    return before ? std::optional(during) : std::nullopt;
  };
  wanted.optimization = replace(kOptimizationKey, kept.optimization, kNotOptimized);
  wanted.debugInfo = replace(kDebugInfoKey, kept.debugInfo, kWithDebugInfo);
  on([&] { uses_.replaced.Note(path, replaced); });
  WriteDebugValues(path, wanted);
  return kept;
}

std::optional<std::int32_t> BuildRun::DebugValue(const std::string& path, std::string_view key) {
  bool isRead = true;
  const Subscription failures =
      uses_.values.failed.Connect([&](const std::string&, const RuntimeError&) { isRead = false; });
  const std::int32_t value = ToLong(NumericValue(uses_.values.ReadProjectValue(path, key)));
  return isRead ? std::optional(value) : std::nullopt;
}

// A file that cannot be written raises no error here.
void BuildRun::WriteDebugValues(const std::string& path, const DebugValues& values) {
  const auto write = [&](std::string_view key, std::optional<std::int32_t> value) {
    if (value) uses_.values.WriteProjectValue(path, key, std::to_string(*value));
  };
  write(kOptimizationKey, values.optimization);
  write(kDebugInfoKey, values.debugInfo);
}

// When debug builds were switched off meanwhile, the project file keeps its present values.
void BuildRun::WriteBack(Procedure& on, const std::string& path, const DebugValues& kept) {
  if (!DebugBuildIsOn()) {
    on([&] { uses_.replaced.Forget(path); });
    return;
  }
  WriteDebugValues(path, kept);
  on([&] { uses_.replaced.Settle(path); });
}

void BuildRun::Record(Procedure& on, const std::string& path, const std::string& exeName,
                      bool succeeded, Counters& counters) {
  if (!succeeded) {
    on([&] { RowOf(path).SetIcon(Image::BuildError); });
    ++counters.errors;
    return;
  }
  ++counters.built;
  on([&] { RowOf(path).SetIcon(Image::BuildOk); });
  on([&] { uses_.script.AddComponent(uses_.window.buildDirectory, exeName); });
}

bool BuildRun::AskToGoOn(const std::string& path) {
  return uses_.dialogs.Show({"Error Building " + path + " Continue?", Buttons::OkCancel,
                             MessageIcon::CriticalStop}) == Answer::Ok;
}

// Tells which projects were built from older sources, before the number of built projects.
void BuildRun::TellOfLatest(Procedure& on) {
  const std::string text = gets_.Text();
  if (!text.empty() && !uses_.work.Ends()) on([&] { Tell(text); });
}

void BuildRun::NoteUnamended(const std::string& path) {
  const bool isKnown = std::find(unamended_.begin(), unamended_.end(), path) != unamended_.end();
  if (!isKnown) unamended_.push_back(path);
}

void BuildRun::TellUnamended() {
  std::string text =
      "These project files could not be changed, and hold other values than asked for:";
  for (const std::string& path : unamended_) text.append(kLineBreak).append(path);
  uses_.dialogs.Show({text, Buttons::Ok, MessageIcon::Exclamation});
}

void BuildRun::Tell(const std::string& text) {
  uses_.dialogs.Show({text});
}

void BuildRun::Summarise(Procedure& on, const Counters& counters) {
  if (counters.errors >= 1) {
    on([&] { uses_.window.txtLogFile.visible.Set(true); });
    if (!uses_.options.StopProcessing) on([&] { Tell("Errors during the build process"); });
  } else if (counters.built == 0 && counters.upToDate == 0) {
    on([&] { Tell("No projects checked for build"); });
  } else if (uses_.options.AutoLaunchVBP && !uses_.work.Ends()) {
    OfferAutoLaunch(on, counters);
  } else {
    on([&] { Tell(DoneText(counters.built, counters.upToDate)); });
  }
}

void BuildRun::OfferAutoLaunch(Procedure& on, const Counters& counters) {
  const Answer answer = on([&] {
    return uses_.dialogs.Show({DoneText(counters.built, counters.upToDate) +
                                   " Do you want to auto-launch your VBP test project?",
                               Buttons::YesNo, MessageIcon::Question,
                               std::string(kApplicationTitle)});
  });
  if (answer != Answer::Yes) return;
  // The user works in it: it is not ended with this program.
  const auto task = uses_.work.Begin(Task::TestProject);
  on([&] {
    uses_.shell.RunAndWait(
        uses_.window.compilerPath + " \"" + uses_.options.AutoLaunchName + "\" /run",
        Shell::Life::ItsOwn);
  });
}

}  // namespace gorbex
