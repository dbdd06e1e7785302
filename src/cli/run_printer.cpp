#include "cli/run_printer.h"

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

// Only a bar in one row of the terminal can be erased.
std::string InOneRow(std::string bar) {
  constexpr std::size_t kColumns = 79;
  const auto isPartOfCharacter = [](char byte) {
    return (static_cast<unsigned char>(byte) & 0xC0U) == 0x80U;
  };
  while (Width(bar) > kColumns) {
    while (isPartOfCharacter(bar.back())) bar.pop_back();
    bar.pop_back();
  }
  return bar;
}

}  // namespace

void RunPrinter::On(const RunEvent& event) {
  if (const auto* project = std::get_if<ProjectStarted>(&event)) {
    current_ = FileName(project->path);
    number_ = project->number;
    of_ = project->of;
    start_ = clock_.Elapsed();
    step_.clear();
    notGot_.reset();
    DrawBar();
  } else if (const auto* step = std::get_if<StepStarted>(&event)) {
    step_ = NameOf(step->step);
    DrawBar();
  } else if (const auto* skipped = std::get_if<ProjectSkipped>(&event)) {
    ClearBar();
    of_ = skipped->of;
    lines_ << Counted(skipped->number, skipped->of) << Padded(FileName(skipped->path), kNameWidth)
           << "skipped  " << Plain(ReasonOf(*skipped)) << std::endl;
  } else if (std::holds_alternative<ProjectUpToDate>(event)) {
    ClearBar();
    lines_ << Counted(number_, of_) << Padded(current_, kNameWidth) << "up to date" << std::endl;
    TellNotGot();
    current_.clear();
  } else if (const auto* latest = std::get_if<LatestGot>(&event)) {
    if (!latest->result.Succeeded()) notGot_ = latest->result.problem;
  } else if (const auto* compiled = std::get_if<ProjectCompiled>(&event)) {
    ClearBar();
    Tell(*compiled);
    current_.clear();
  } else if (const auto* ended = std::get_if<RunEnded>(&event)) {
    ClearBar();
    TellEnd(*ended);
  }
}

void RunPrinter::Tell(const ProjectCompiled& compiled) {
  lines_ << Counted(number_, of_) << Padded(current_, kNameWidth)
         << (compiled.succeeded ? "built   " : "FAILED  ") << Seconds(compiled.duration) << '\n';
  TellNotGot();
  if (!compiled.succeeded) {
    lines_ << Indented(compiled.log.empty() ? compiled.problem : compiled.log);
  }
  lines_.flush();
}

// The same words for each project of a run would hide what else it says.
void RunPrinter::TellNotGot() {
  if (!notGot_) return;
  const bool isNew = toldProblems_.insert(*notGot_).second;
  lines_ << Indented(isNew ? "latest sources NOT GOT: " + *notGot_
                           : "latest sources NOT GOT, for the same reason");
}

void RunPrinter::TellEnd(const RunEnded& ended) {
  lines_ << CountsText(ended, of_) << " in " << Seconds(ended.duration) << '\n';
}

void RunPrinter::Tick() {
  constexpr std::chrono::milliseconds kFrame{100};
  if (!current_.empty() && clock_.Elapsed() - drawn_ >= kFrame) DrawBar();
}

void RunPrinter::DrawBar() {
  if (!frame_.streams.animates || of_ == 0) return;
  drawn_ = clock_.Elapsed();
  const std::size_t filled = kBarWidth * (number_ - 1) / of_;
  Draw("[" + std::string(filled, '#') + std::string(kBarWidth - filled, '.') + "] " +
       std::to_string(number_) + " of " + std::to_string(of_) + "  " + current_ + "  " +
       Seconds(drawn_ - start_) + (step_.empty() ? "" : "  " + step_));
}

void RunPrinter::ClearBar() {
  if (frame_.streams.animates && barWidth_ > 0) Draw("");
}

// Blanks erase the bar before: not every console knows a code for that.
void RunPrinter::Draw(const std::string& whole) {
  const std::string bar = InOneRow(whole);
  frame_.streams.err << "\r" + std::string(barWidth_, ' ') + "\r" + bar << std::flush;
  barWidth_ = Width(bar);
}

}  // namespace gorbex::cli
