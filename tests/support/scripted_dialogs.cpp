#include "tests/support/scripted_dialogs.h"

#include <array>

namespace gorbex::test {
namespace {

constexpr std::string_view kLineMark = "Occurred at line ";

template <class Queue>
auto TakeFront(Queue& queue) {
  auto front = std::move(queue.front());
  queue.pop_front();
  return front;
}

std::string Joined(const FileChoice& choice) {
  return choice.title + "|" + choice.filter + "|" + choice.name;
}

}  // namespace

std::string Shown(const Message& message) {
  constexpr std::array kButtons = {"Ok", "OkCancel", "YesNo", "AbortRetryIgnore"};
  constexpr std::array kIcons = {"None", "Question", "Exclamation", "CriticalStop"};
  const bool isPlain = message.buttons == Buttons::Ok && message.icon == MessageIcon::None &&
                       message.caption.empty();
  if (isPlain) return "show " + message.text;
  std::string how = kButtons.at(static_cast<std::size_t>(message.buttons));
  how.append(" ").append(kIcons.at(static_cast<std::size_t>(message.icon)));
  if (!message.caption.empty()) how += " " + message.caption;
  return "show [" + how + "] " + message.text;
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
  return answers.empty() ? SafeAnswer(message.buttons) : TakeFront(answers);
}

std::optional<std::string> ScriptedDialogs::NextChoice(const std::string& line) {
  journal_.push_back(line);
  return choices.empty() ? std::nullopt : TakeFront(choices);
}

std::optional<std::string> ScriptedDialogs::OpenFile(const FileChoice& choice) {
  return NextChoice("open " + Joined(choice));
}

std::optional<std::string> ScriptedDialogs::SaveFile(const FileChoice& choice) {
  return NextChoice("save " + Joined(choice));
}

std::optional<std::string> ScriptedDialogs::ChooseFolder(const std::string& title) {
  return NextChoice("folder " + title);
}

std::optional<std::string> ScriptedDialogs::Input(const std::string& prompt,
                                                  const std::string& initial) {
  return NextChoice("input " + prompt + "|" + initial);
}

}  // namespace gorbex::test
