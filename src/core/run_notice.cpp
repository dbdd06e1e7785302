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
    end_.reset();
    isTold_ = false;
  }
  if (std::holds_alternative<ProjectStarted>(event)) isTold_ = false;
  if (const auto* done = std::get_if<RunDone>(&event)) end_ = done->end;
  if (const auto* asked = std::get_if<QuestionAsked>(&event)) {
    Tell(end_ ? CountsText(*end_, checked_) : OnOneLine(asked->message.text));
  }
  if (const auto* ended = std::get_if<RunEnded>(&event)) {
    Tell(CountsText(*ended, checked_));
    checked_ = 0;
  }
}

void RunNotice::Tell(const std::string& text) {
  constexpr std::chrono::seconds kLong{10};
  if (checked_ == 0 || isTold_ || clock_.Elapsed() - start_ <= kLong) return;
  if (!isInFront || isInFront()) return;
  isTold_ = true;
  due.Emit(text);
}

}  // namespace gorbex
