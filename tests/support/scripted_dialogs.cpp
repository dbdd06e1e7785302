#include "tests/support/scripted_dialogs.h"

#include <array>

namespace gorbex::test {
namespace {

constexpr std::string_view kLineMark = "Occurred at line ";

}  // namespace

std::string Shown(const Message& message) {
  constexpr std::array kButtons = {"Ok", "OkCancel", "YesNo", "AbortRetryIgnore"};
  constexpr std::array kIcons = {"None", "Question", "Exclamation", "CriticalStop"};
  std::string how = kButtons.at(static_cast<std::size_t>(message.buttons));
  how.append(" ").append(kIcons.at(static_cast<std::size_t>(message.icon)));
  if (!message.caption.empty()) how += " " + message.caption;
  return (how == "Ok None" ? "show " : "show [" + how + "] ") + message.text;
}

std::string Reported(int number, std::string_view description, std::string_view procedure) {
  std::string text = "Error " + std::to_string(number) + ": \r\n";
  text.append(description).append("\r\n").append(kLineMark);
  text.append("*in GorbexBuilder").append(procedure);
  return Shown({text, Buttons::AbortRetryIgnore, MessageIcon::Exclamation, "GorbexBuilder Error."});
}

std::string WithoutLineNumber(std::string line) {
  const auto mark = line.find(kLineMark);
  if (mark == std::string::npos) return line;
  const auto number = mark + kLineMark.size();
  return line.replace(number, line.find_first_not_of("0123456789", number) - number, "*");
}

Answer ScriptedDialogs::Show(const Message& message) {
  journal_.push_back(Shown(message));
  const bool isReport = message.buttons == Buttons::AbortRetryIgnore;
  if (answers.empty()) return isReport && toReports ? *toReports : SafeAnswer(message.buttons);
  const Answer answer = answers.front();
  answers.pop_front();
  return answer;
}

std::optional<std::string> ScriptedDialogs::Choose(const std::string& line) {
  journal_.push_back(line);
  if (choices.empty()) return std::nullopt;
  auto choice = choices.front();
  choices.pop_front();
  return choice;
}

}  // namespace gorbex::test
