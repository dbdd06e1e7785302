#include "cli/run_printer.h"

#include <algorithm>
#include <variant>

#include "cli/text_output.h"

namespace gorbex::cli {
namespace {

constexpr std::size_t kBarWidth = 24;
constexpr std::size_t kNameWidth = 32;

std::string Counted(std::size_t number, std::size_t of) {
  const std::string total = std::to_string(of);
  std::string shown = std::to_string(number);
  shown.insert(0, total.size() - std::min(total.size(), shown.size()), ' ');
  return "[" + shown + "/" + total + "] ";
}

}  // namespace

void RunPrinter::On(const RunEvent& event) {
  std::visit([this](const auto& each) { Hear(each); }, event);
}

void RunPrinter::Hear(const ProjectStarted& project) {
  building_.push_back({project.path, clock_.Elapsed(), "", project.left});
  Draw();
}

void RunPrinter::Hear(const StepStarted& step) {
  if (Building* building = Find(step.path)) building->step = NameOf(step.step);
  Draw();
}

void RunPrinter::Hear(const LatestGot& latest) {
  Building* building = Find(latest.path);
  if (building != nullptr && !latest.result.Succeeded()) building->notGot = latest.result.problem;
}

void RunPrinter::Hear(const ProjectSkipped& skipped) {
  lines_ << Done(skipped.path) << "skipped  " << Plain(ReasonOf(skipped)) << std::endl;
}

void RunPrinter::Hear(const ProjectUpToDate& fresh) {
  lines_ << Done(fresh.path) << "up to date" << std::endl;
  TellNotGot(fresh.path);
  Forget(fresh.path);
}

void RunPrinter::Hear(const ProjectCompiled& compiled) {
  lines_ << Done(compiled.path) << (compiled.succeeded ? "built   " : "FAILED  ")
         << Seconds(compiled.duration) << '\n';
  TellNotGot(compiled.path);
  if (!compiled.succeeded) {
    if (const auto& failure = compiled.failure) {
      lines_ << paths_.Short(failure->file) << Plain(FailureText(*failure)) << '\n';
    }
    lines_ << Indented(compiled.log.empty() ? compiled.problem : compiled.log);
  }
  lines_.flush();
  Forget(compiled.path);
}

void RunPrinter::Hear(const RunPaced& paced) {
  pace_ = paced;
  paced_ = clock_.Elapsed();
  Draw();
}

void RunPrinter::Hear(const RunEnded& ended) {
  rows_.Clear();
  lines_ << CountsText(ended, of_) << " in " << Seconds(ended.duration) << '\n';
}

std::string RunPrinter::Done(const std::string& path) {
  rows_.Clear();
  return Counted(++done_, of_) + Padded(FileName(path), kNameWidth);
}

RunPrinter::Building* RunPrinter::Find(const std::string& path) {
  const auto found = std::ranges::find(building_, path, &Building::path);
  return found == building_.end() ? nullptr : &*found;
}

// The same words for each project of a run would hide what else it says.
void RunPrinter::TellNotGot(const std::string& path) {
  const Building* building = Find(path);
  if (building == nullptr || !building->notGot) return;
  const std::string& problem = *building->notGot;
  const bool isNew = toldProblems_.insert(problem).second;
  lines_ << Indented(isNew ? "latest sources NOT GOT: " + problem
                           : "latest sources NOT GOT, for the same reason");
}

void RunPrinter::Tick() {
  constexpr std::chrono::milliseconds kFrame{100};
  if (!building_.empty() && clock_.Elapsed() - drawn_ >= kFrame) Draw();
}

void RunPrinter::Draw() {
  if (!frame_.streams.animates || of_ == 0 || building_.empty()) return;
  drawn_ = clock_.Elapsed();
  std::vector<std::string> rows = {Bar()};
  if (!pace_) {
    const Building& only = building_.front();
    rows.front() +=
        " " + std::to_string(done_ + 1) + " of " + std::to_string(of_) + "  " + Row(only);
    const std::string left = LeftText(only.left, drawn_ - only.start);
    if (!left.empty()) rows.front() += "  " + left;
  } else {
    RunPaced now = *pace_;
    now.building = building_.size();
    rows.front() += " " + PaceText(now, drawn_ - paced_);
    for (const Building& building : building_) rows.push_back("  " + Row(building));
  }
  rows_.Show(std::move(rows));
}

std::string RunPrinter::Bar() const {
  const std::size_t filled = kBarWidth * done_ / of_;
  return "[" + std::string(filled, '#') + std::string(kBarWidth - filled, '.') + "]";
}

std::string RunPrinter::Row(const Building& building) const {
  return FileName(building.path) + "  " + Seconds(drawn_ - building.start) +
         (building.step.empty() ? "" : "  " + building.step);
}

}  // namespace gorbex::cli
