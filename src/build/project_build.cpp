#include "build/project_build.h"

#include <utility>

#include "platform/code_page.h"

namespace gorbex {

ProjectBuild::ProjectBuild(const RunParts& parts, RunState& run, RunEvents& events,
                           std::string path, std::size_t place)
    : parts_(parts),
      run_(run),
      events_(events),
      path_(std::move(path)),
      place_(place),
      debug_(parts.options, parts.values, parts.replaced, path_) {}

ListRow& ProjectBuild::Row() const {
  ListRow* row = parts_.window.lvwQueue.Find(path_);
  if (row == nullptr) throw RuntimeError(ErrorNumber::ElementNotFound, path_);
  return *row;
}

bool ProjectBuild::IsSkipped(Procedure& on) {
  if (!parts_.options.SkipUsersOfFailed || !run_.usersOfFailed) return false;
  const std::string failed = run_.usersOfFailed->FailedUseOf(path_);
  if (failed.empty()) return false;
  const ProjectSkipped skipped{path_, ++run_.number, run_.checked, failed};
  on([&] { parts_.log.WriteLog("Skipped " + path_ + ": " + ReasonOf(skipped)); });
  events_.Emit(skipped);
  return true;
}

bool ProjectBuild::AskToGoOn() {
  return parts_.dialogs.Show({"Error Building " + path_ + " Continue?", Buttons::OkCancel,
                              MessageIcon::CriticalStop}) == Answer::Ok;
}

bool ProjectBuild::Begin(Procedure& on) {
  frmBuilder& window = parts_.window;
  events_.Emit(ProjectStarted{path_, ++run_.number, run_.checked, place_,
                              run_.clock.Elapsed() - run_.start, run_.timeLeft.From(run_.number)});
  start_ = run_.WorkingTime();
  ShowBegin(on);
  const bool isGone = IsGone(path_, window.ProjectMembers, parts_.files);
  exeName_ = on([&] { return isGone ? "" : window.ProjectMembers.Item(path_).EXEName; });
  if (!isGone && parts_.options.GetLatest) GetLatest(on);
  if (!isGone && IsPassedOver(on)) return false;
  if (!isGone) Prepare(on);
  events_.Emit(StepStarted{path_, BuildStep::Compile});
  compile_ = parts_.compile.Start(path_, place_);
  return true;
}

void ProjectBuild::ShowBegin(Procedure& on) {
  on([&] { Row().SetIcon(Image::Building); });
  on([&] { Row().EnsureVisible(); });
  on([&] { parts_.window.lvwQueue.Refresh(); });
  on([&] { parts_.window.SetStatus("Building " + path_); });
}

bool ProjectBuild::IsPassedOver(Procedure& on) {
  if (!parts_.options.SkipUpToDate || parts_.work.Ends()) return false;
  const Judgement judgement = parts_.freshness.JudgeInRun(path_);
  on([&] { Row().SetNote(NoteOf(judgement)); });
  if (!judgement.IsUpToDate()) {
    events_.Emit(ProjectOutdated{path_, ReasonsText(judgement.reasons)});
    return false;
  }
  ++run_.upToDate;
  on([&] { Row().SetIcon(Image::UpToDate); });
  component_ = exeName_;
  on([&] { parts_.log.WriteLog("Skipped " + path_ + ": it is up to date"); });
  events_.Emit(ProjectUpToDate{path_, judgement.since});
  return true;
}

void ProjectBuild::GetLatest(Procedure& on) {
  events_.Emit(StepStarted{path_, BuildStep::Latest});
  on([&] { parts_.log.WriteLog("Getting latest " + path_ + " code"); });
  const LatestResult got = on([&] { return parts_.latest.GetLatestForProject(path_); });
  run_.gets.Add(path_, got);
  events_.Emit(LatestGot{path_, got});
  if (!got.Succeeded()) {
    on([&] {
      parts_.log.WriteLog("Failed to get latest " + path_ + " code: " + OnOneLine(got.problem));
    });
  }
  on([&] { parts_.window.SetStatus("Building " + path_); });
}

void ProjectBuild::Prepare(Procedure& on) {
  const clsOptions& options = parts_.options;
  if (parts_.work.Ends()) return;
  if (!options.Compatible) {
    events_.Emit(StepStarted{path_, BuildStep::Compatibility});
    on([&] { parts_.log.WriteLog("Breaking compatability on " + path_); });
    on([&] { parts_.values.WriteProjectValue(path_, "CompatibleMode", "\"0\""); });
  }
  if (debug_.IsWanted()) {
    events_.Emit(StepStarted{path_, BuildStep::Debug});
    debug_.Set(on);
  }
  if (options.ChangeRefs) UpdateReferences(on);
  if (!options.VersionComponents.empty()) {
    events_.Emit(StepStarted{path_, BuildStep::Version});
    parts_.version.Stamp(on, path_);
  }
}

void ProjectBuild::UpdateReferences(Procedure& on) {
  events_.Emit(StepStarted{path_, BuildStep::References});
  if (!on([&] { return run_.consent.ForProject(path_); })) {
    on([&] { parts_.log.WriteLog("References of " + path_ + " left as they are"); });
    return;
  }
  const bool isUpdated = on([&] { return parts_.references.UpdateProjectReferences(path_); });
  if (!isUpdated) run_.NoteUnamended(path_);
  on([&] { parts_.log.WriteLog("Updating References on " + path_); });
}

bool ProjectBuild::HasEnded(std::chrono::milliseconds patience) const {
  return !compile_ || compile_->HasEnded(patience);
}

bool ProjectBuild::Finish(Procedure& on) {
  auto compile = std::exchange(compile_, std::nullopt);
  if (!compile) return false;
  const CompileEnded result = parts_.compile.Finish(std::move(*compile));
  on([&] {
    parts_.log.WriteLog(std::string("Build was ") +
                        (result.succeeded ? "Succesfull" : "Unsuccesfull"));
  });
  on([&] { parts_.events.DoEvents(); });
  Record(on, result.succeeded);
  debug_.Undo(on);
  events_.Emit(ProjectCompiled{path_, result.succeeded, run_.WorkingTime() - start_, result.log,
                               result.problem, result.failure});
  return result.succeeded;
}

void ProjectBuild::Record(Procedure& on, bool succeeded) {
  on([&] { Row().SetIcon(succeeded ? Image::BuildOk : Image::BuildError); });
  if (succeeded) {
    ++run_.built;
    component_ = exeName_;
    return;
  }
  ++run_.errors;
  if (!run_.usersOfFailed) {
    run_.usersOfFailed.emplace(parts_.window.ProjectMembers, parts_.group);
  }
  run_.usersOfFailed->Add(path_);
}

}  // namespace gorbex
