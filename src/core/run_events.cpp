#include "core/run_events.h"

namespace gorbex {

std::string_view NameOf(BuildStep step) {
  static constexpr std::string_view kNames[] = {"getting latest sources", "breaking compatibility",
                                                "setting debug values",   "updating references",
                                                "stamping the version",   "compiling"};
  return kNames[static_cast<std::size_t>(step)];
}

std::string ReasonOf(const ProjectSkipped& skipped) {
  return "it uses " + skipped.failed + ", which failed";
}

std::string_view ProblemOf(const RunEnded& end) {
  static constexpr std::string_view kEarly[] = {
      "the run was refused at a question", "the run was refused at a question",
      "there is no compiler", "the run was aborted at an error",
      "the run was stopped before its end"};
  if (end.result != RunResult::Finished) return kEarly[static_cast<std::size_t>(end.result)];
  return end.unamended.empty() ? "" : "project files could not be changed as asked";
}

std::string LeftText(const std::optional<TimeEstimate>& estimate, std::chrono::milliseconds ago) {
  if (!estimate || estimate->After(ago).count() <= 0) return "";
  const auto seconds = std::chrono::ceil<std::chrono::seconds>(estimate->After(ago)).count();
  return "about " +
         (seconds < 100 ? std::to_string(seconds) + " s"
                        : std::to_string((seconds + 59) / 60) + " min") +
         " left";
}

std::string PaceText(const RunPaced& paced, std::chrono::milliseconds ago) {
  const std::string left = LeftText(paced.left, ago);
  return std::to_string(paced.done) + " of " + std::to_string(paced.of) + " done, " +
         std::to_string(paced.building) + " building" + (left.empty() ? "" : ", " + left);
}

std::string CountsText(const RunEnded& run, std::size_t checked) {
  std::size_t done = 0;
  for (const int count : {run.built, run.errors, run.upToDate}) {
    done += static_cast<std::size_t>(count);
  }
  const bool isWhole = done >= checked;
  std::string text = run.result == RunResult::Stopped ? "stopped: " : "";
  text += std::to_string(run.built) + " built";
  if ((isWhole && run.upToDate == 0) || run.errors > 0) {
    text += ", " + std::to_string(run.errors) + " failed";
  }
  if (run.upToDate > 0) text += ", " + std::to_string(run.upToDate) + " up to date";
  if (!isWhole) text += ", " + std::to_string(checked - done) + " not built";
  return text;
}

}  // namespace gorbex
