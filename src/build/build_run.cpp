#include "build/build_run.h"

#include <algorithm>
#include <utility>

#include "build/side_by_side.h"
#include "core/list_columns.h"
#include "core/text.h"
#include "freshness/build_plan.h"

namespace gorbex {
namespace {

bool IsIncompatible(const ListRow& row) {
  return row.SubItem(queue_column::kCompatibility).starts_with("NOT");
}

std::string DoneText(std::int32_t built, std::int32_t upToDate) {
  if (upToDate == 0) return "Built " + std::to_string(built) + " components.";
  const std::string rest = std::to_string(upToDate) + (upToDate == 1 ? " is" : " are");
  return "Built " + std::to_string(built) + " components; " + rest + " up to date.";
}

}  // namespace

void BuildRun::mnuFileBuild_Click() {
  Start({});
}

void BuildRun::BuildAgain(const std::vector<FailedProject>& failed) {
  std::set<std::string> projects;
  for (const FailedProject& project : failed) projects.insert(project.path);
  Start(std::move(projects));
}

void BuildRun::Start(RowsToRepeat rows) {
  const auto turn = parts_.compile.BeginBuild();
  if (turn == nullptr) return;
  RunState run(parts_, std::move(rows));
  auto task = parts_.work.Begin(Task::Run);
  RunResult result = RunResult::Aborted;
  const Subscription questions = parts_.dialogs.asking.Connect([&](const Message& message) {
    run.questionTime.Asked();
    events.Emit(QuestionAsked{message});
  });
  const Subscription answers =
      parts_.dialogs.answered.Connect([&](const Message& message, Answer answer) {
        run.questionTime.Answered();
        events.Emit(QuestionAnswered{message, answer});
      });
  const Subscription failures = parts_.values.failed.Connect(
      [&](const std::string& path, const RuntimeError&) { run.NoteUnamended(path); });
  Procedure(parts_.report, ": frmBuilder.mnuFileBuild_Click").Run([&](Procedure& on) {
    result = Run(on, run);
  });
  if (result == RunResult::Aborted) RecoverFromAbort();
  if (!run.unamended.empty() && !parts_.work.Ends()) TellUnamended(run);
  task.reset();
  events.Emit(EndOf(run, result));
}

RunEnded BuildRun::EndOf(const RunState& run, RunResult result) const {
  const auto end = run.end.value_or(parts_.clock.Elapsed());
  return {result, run.built, run.errors, end - run.start, run.unamended, run.upToDate};
}

void BuildRun::mnuFileStop_Click() {
  Work& work = parts_.work;
  const bool isLaunched = work.Goes(Task::TestProject);
  const bool several = parts_.shell.Running() > 1;
  if (work.Goes(Task::Run) && !work.RunStops()) {
    work.StopAfterThis();
    parts_.window.SetStatus(
        isLaunched ? "Nothing is stopped: the build is done, and the test project is running"
        : several  ? "Stopping after the projects that are being built"
                   : "Stopping after this project");
    return;
  }
  if (!work.Goes(Task::Program)) return;
  const Answer answer =
      parts_.dialogs.Show({isLaunched ? "The test project is still running. End it now?"
                           : several  ? "The compilers are still running. End them now?"
                                      : "The compiler is still running. End it now?",
                           Buttons::YesNo, MessageIcon::Exclamation});
  if (answer == Answer::Yes) parts_.shell.TerminateAll();
}

void BuildRun::End() {
  parts_.work.EndNow();
  parts_.shell.TerminateAll();
}

RunResult BuildRun::Run(Procedure& on, RunState& run) {
  frmBuilder& window = parts_.window;
  on([&] { window.tmrOutlook.enabled.Set(false); });
  on([&] { parts_.log.WriteLog("Build Started"); });
  on([&] { parts_.compile.AskForCompiler(); });
  const bool incompatible = ResetIcons(on, run);
  const bool asks = !parts_.options.ChangeRefs && incompatible && MayBuildIncompatible(run);
  if (asks && !on([&] { return AskAboutCompatibility(); })) {
    on([&] { RestoreMailTimer(); });
    return RunResult::Refused;
  }
  const bool compiles = !window.compilerPath.empty();
  if (compiles && parts_.options.ChangeRefs &&
      !on([&] { return run.consent.ForRun([&](const ListRow& row) { return run.Takes(row); }); })) {
    on([&] { RestoreMailTimer(); });
    return RunResult::KeptReferences;
  }
  on([&] { window.menu.mnuFileBuild.enabled.Set(false); });
  window.resultLogPath = parts_.compile.QuotedResultLog();
  on([&] { window.mousePointer.Set(MousePointer::Hourglass); });
  const RunResult result = compiles ? BuildQueueRows(on, run) : RunResult::NoCompiler;
  Summarise(on, run);
  on([&] { window.SetStatus("Build Process finished"); });
  on([&] { window.menu.mnuFileBuild.enabled.Set(true); });
  on([&] { window.mousePointer.Set(MousePointer::Default); });
  on([&] {
    parts_.log.WriteLog(run.errors >= 1 ? "Build Finished with errors."
                                        : "Build Finished succesfully.");
  });
  on([&] { RestoreMailTimer(); });
  return result;
}

void BuildRun::RecoverFromAbort() {
  frmBuilder& window = parts_.window;
  window.menu.mnuFileBuild.enabled.Set(true);
  window.mousePointer.Set(MousePointer::Default);
  const bool isMailOff =
      window.menu.mnuToolsInBox.checked.Get() && !window.tmrOutlook.enabled.Get();
  window.SetStatus(isMailOff ? "Build aborted; the remaining projects stayed as they were, and the "
                               "inbox is not checked until Check Inbox is switched off and on"
                             : "Build aborted; the remaining projects stayed as they were");
}

void BuildRun::RestoreMailTimer() {
  frmBuilder& window = parts_.window;
  window.tmrOutlook.enabled.Set(window.menu.mnuToolsInBox.checked.Get());
}

// True when a row of the run is marked as not compatible.
bool BuildRun::ResetIcons(Procedure& on, const RunState& run) {
  bool incompatible = false;
  for (const auto& row : parts_.window.lvwQueue.Rows()) {
    if (run.rowsToRepeat && !run.Takes(*row)) continue;
    on([&] { row->SetIcon(Image::VbProject); });
    row->SetNote("");
    incompatible = incompatible || (run.Takes(*row) && IsIncompatible(*row));
  }
  return incompatible;
}

// Only a get tells which sources the run finds. A project that failed is not up to date.
bool BuildRun::MayBuildIncompatible(const RunState& run) {
  if (!parts_.options.SkipUpToDate || parts_.options.GetLatest || run.rowsToRepeat) return true;
  const BuildPlan plan = PlanOf(parts_.window, parts_.group, parts_.freshness);
  return std::ranges::any_of(plan.projects, [&](const PlannedProject& each) {
    return each.MayBeBuilt() && IsIncompatible(*parts_.window.lvwQueue.Find(each.path));
  });
}

bool BuildRun::AskAboutCompatibility() {
  std::string question = "You are attempting to build files which DO NOT have compatability set.";
  question.append(kLineBreak)
      .append("If you have other components referencing these then they WILL NOT work.")
      .append(kLineBreak)
      .append("Do you wish to continue with your build?");
  return parts_.dialogs.Show({question, Buttons::YesNo, MessageIcon::CriticalStop,
                              std::string(kApplicationTitle)}) == Answer::Yes;
}

RunResult BuildRun::BuildQueueRows(Procedure& on, RunState& run) {
  frmBuilder& window = parts_.window;
  on([&] { window.txtLogFile.text.Set(""); });
  on([&] { parts_.script.Begin(); });
  auto paths = run.TakenFrom(window.lvwQueue);
  run.checked = paths.size();
  events.Emit(RunStarted{std::move(paths), run.rowsToRepeat.has_value()});
  parts_.freshness.LookAgain();
  const auto batch = parts_.latest.BeginBatch();
  const std::size_t places = parts_.options.Places();
  if (places > 1) {
    SideBySide(parts_, run, events, places).Run(on);
  } else {
    BuildInTurn(on, run);
  }
  const RunResult result = run.IsStopped(parts_.work) ? RunResult::Stopped : RunResult::Finished;
  on([&] { parts_.script.End(); });
  on([&] { window.menu.mnuFileGenScript.enabled.Set(true); });
  run.end = parts_.clock.Elapsed();
  events.Emit(RunDone{EndOf(run, result)});
  return result;
}

TimeLeft::Durations BuildRun::LastDurations(const RunState& run) const {
  TimeLeft::Durations durations;
  for (const auto& row : parts_.window.lvwQueue.Rows()) {
    if (!run.Takes(*row)) continue;
    const clsMember* project =
        parts_.window.ProjectMembers.Find(row->SubItem(queue_column::kProject));
    durations.push_back(
        project == nullptr ? std::nullopt
                           : parts_.freshness.LastDuration(*project, parts_.window.buildDirectory));
  }
  return durations;
}

void BuildRun::BuildInTurn(Procedure& on, RunState& run) {
  ListView& queue = parts_.window.lvwQueue;
  run.timeLeft = TimeLeft(LastDurations(run));
  const std::size_t count = queue.Count();
  for (std::size_t i = 1; i <= count && !parts_.work.RunStops(); ++i) {
    const ListRow* row = on([&] { return &queue.At(i); });
    if (row == nullptr || !run.Takes(*row)) continue;
    ProjectBuild build(parts_, run, events, row->SubItem(queue_column::kProject), 1);
    run.isCancelled = BuildProject(on, build) == Pass::Stop;
    if (run.isCancelled) break;
  }
}

BuildRun::Pass BuildRun::BuildProject(Procedure& on, ProjectBuild& build) {
  if (build.IsSkipped(on)) return Pass::GoOn;
  const bool compiles = build.Begin(on);
  for (bool hasEnded = !compiles; !hasEnded;) {
    hasEnded = build.HasEnded(Shell::kPatience);
    parts_.events.DoEvents();
  }
  const bool isDone = !compiles || build.Finish(on);
  if (!build.Component().empty()) {
    on([&] { parts_.script.AddComponent(parts_.window.buildDirectory, build.Component()); });
  }
  if (isDone || parts_.work.Ends() || !parts_.options.StopProcessing) return Pass::GoOn;
  return on([&] { return build.AskToGoOn(); }) ? Pass::GoOn : Pass::Stop;
}

void BuildRun::TellUnamended(const RunState& run) {
  std::string text =
      "These project files could not be changed, and hold other values than asked for:";
  for (const std::string& path : run.unamended) text.append(kLineBreak).append(path);
  parts_.dialogs.Show({text, Buttons::Ok, MessageIcon::Exclamation});
}

// Tells which projects were built from older sources, before the number of built projects.
void BuildRun::Summarise(Procedure& on, const RunState& run) {
  const std::string latest = run.gets.Text();
  if (!latest.empty() && !parts_.work.Ends()) on([&] { parts_.dialogs.Show({latest}); });
  if (run.errors >= 1) {
    on([&] { parts_.window.txtLogFile.visible.Set(true); });
    if (parts_.options.StopProcessing) return;
    on([&] { parts_.dialogs.Show({"Errors during the build process"}); });
  } else if (run.built == 0 && run.upToDate == 0) {
    on([&] { parts_.dialogs.Show({"No projects checked for build"}); });
  } else if (parts_.options.AutoLaunchVBP && !parts_.work.Ends()) {
    OfferAutoLaunch(on, run);
  } else {
    on([&] { parts_.dialogs.Show({DoneText(run.built, run.upToDate)}); });
  }
}

void BuildRun::OfferAutoLaunch(Procedure& on, const RunState& run) {
  const Answer answer = on([&] {
    return parts_.dialogs.Show(
        {DoneText(run.built, run.upToDate) + " Do you want to auto-launch your VBP test project?",
         Buttons::YesNo, MessageIcon::Question, std::string(kApplicationTitle)});
  });
  if (answer != Answer::Yes) return;
  // The user works in it: it is not ended with this program.
  const auto task = parts_.work.Begin(Task::TestProject);
  on([&] {
    parts_.shell.ShellAndWait(
        parts_.window.compilerPath + " \"" + parts_.options.AutoLaunchName + "\" /run",
        Shell::Life::ItsOwn);
  });
}

}  // namespace gorbex
