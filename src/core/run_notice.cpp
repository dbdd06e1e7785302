#include "core/run_notice.h"

#include "platform/code_page.h"

namespace gorbex {

RunNotice::RunNotice(RunEvents& events, const Clock& clock)
    : clock_(clock),
      subscription_(events.Connect([this](const RunEvent& event) { Hear(event); })) {}

void RunNotice::Hear(const RunEvent& event) {
  if (const auto* started = std::get_if<RunStarted>(&event)) {
    start_ = clock_.Elapsed();
    checked_ = started->paths.size();
    passed_ = 0;
    counts_ = {};
    isTold_ = false;
  }
  if (std::holds_alternative<ProjectStarted>(event)) isTold_ = false;
  Count(event);
  // A run ends with a message, and with its answer.
  if (const auto* asked = std::get_if<QuestionAsked>(&event)) {
    Tell(IsDone() ? CountsText(counts_, checked_) : OnOneLine(asked->message.text));
  }
  if (const auto* ended = std::get_if<RunEnded>(&event)) {
    Tell(CountsText(*ended, checked_));
    checked_ = 0;
  }
}

void RunNotice::Count(const RunEvent& event) {
  const auto* compiled = std::get_if<ProjectCompiled>(&event);
  if (compiled != nullptr) ++(compiled->succeeded ? counts_.built : counts_.errors);
  const bool isUpToDate = std::holds_alternative<ProjectUpToDate>(event);
  if (isUpToDate) ++counts_.upToDate;
  const bool isSkipped = std::holds_alternative<ProjectSkipped>(event);
  if (compiled != nullptr || isUpToDate || isSkipped) ++passed_;
}

bool RunNotice::IsDone() const {
  return passed_ >= checked_;
}

void RunNotice::Tell(const std::string& text) {
  constexpr std::chrono::seconds kLong{10};
  if (checked_ == 0 || isTold_ || clock_.Elapsed() - start_ <= kLong) return;
  if (!isInFront || isInFront()) return;
  isTold_ = true;
  due.Emit(text);
}

}  // namespace gorbex
