#include "core/procedure.h"

#include "core/text.h"

namespace gorbex {

namespace {

std::string ReportText(const RuntimeError& error, std::string_view procedure, unsigned line,
                       std::string_view lineBreak) {
  std::string text = "Error " + std::to_string(error.Number()) + ": ";
  text.append(lineBreak).append(error.Description()).append(lineBreak);
  text.append("Occurred at line ").append(std::to_string(line));
  return text.append("in ").append(kApplicationTitle).append(procedure);
}

}  // namespace

Answer ErrorReport::Show(const RuntimeError& error, std::string_view procedure, unsigned line) {
  if (record_) record_(ReportText(error, procedure, line, ""));
  return dialogs_.Show({ReportText(error, procedure, line, kLineBreak), Buttons::AbortRetryIgnore,
                        MessageIcon::Exclamation, std::string(kApplicationTitle) + " Error."});
}

bool Procedure::Again(const RuntimeError& error, unsigned line, Outermost outermost) const {
  if (report_ == nullptr) {
    if (outermost == Outermost::Yes) throw Left{};
    return false;
  }
  const Answer answer = report_->Show(error, name_, line);
  // Outside a statement there is no place to go on from, so only Abort remains.
  if (outermost == Outermost::Yes || answer == Answer::Abort) throw Left{};
  return answer == Answer::Retry;
}

}  // namespace gorbex
