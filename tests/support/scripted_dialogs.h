#pragma once

#include <array>
#include <deque>
#include <functional>
#include <optional>
#include <string>
#include <string_view>
#include <vector>

#include "core/dialogs.h"
#include "core/label_form.h"
#include "core/login_form.h"
#include "core/options_form.h"
#include "core/text.h"
#include "tests/support/journal.h"

namespace gorbex::test {

inline constexpr std::string_view kLineMark = "Occurred at line ";

/// The journal's line for a message: "show TEXT" when it is plain, else buttons, icon and caption
/// before the text: "show [AbortRetryIgnore Exclamation GorbexBuilder Error.] TEXT".
[[nodiscard]] inline std::string Shown(const Message& message) {
  constexpr std::array kButtons = {"Ok", "OkCancel", "YesNo", "AbortRetryIgnore"};
  constexpr std::array kIcons = {"None", "Question", "Exclamation", "CriticalStop"};
  std::string how = kButtons.at(static_cast<std::size_t>(message.buttons));
  how.append(" ").append(kIcons.at(static_cast<std::size_t>(message.icon)));
  if (!message.caption.empty()) how += " " + message.caption;
  return (how == "Ok None" ? "show " : "show [" + how + "] ") + message.text;
}

/// The journal's line for the standard report of an error, without its line number ("line *in").
[[nodiscard]] inline std::string Reported(int number, std::string_view description,
                                          std::string_view procedure) {
  std::string text = "Error " + std::to_string(number) + ": \r\n";
  text.append(description).append("\r\n").append(kLineMark);
  text.append("*in GorbexBuilder").append(procedure);
  return Shown({text, Buttons::AbortRetryIgnore, MessageIcon::Exclamation, "GorbexBuilder Error."});
}

/// A journal line with the line number of an error report replaced by "*".
[[nodiscard]] inline std::string WithoutLineNumber(std::string line) {
  const auto mark = line.find(kLineMark);
  if (mark == std::string::npos) return line;
  const auto number = mark + kLineMark.size();
  return line.replace(number, line.find_first_not_of("0123456789", number) - number, "*");
}

/// A user who answers what a test queued; asked for more, one who gives the safe answer and cancels
/// every choice. Journals messages (see Shown), "open TITLE|FILTER|NAME", "save TITLE|FILTER|NAME",
/// "folder TITLE" and "input PROMPT|INITIAL".
class ScriptedDialogs : public Dialogs {
 public:
  explicit ScriptedDialogs(Journal& journal) : journal_(journal) {}

  std::deque<Answer> answers;
  std::optional<Answer> toReports;  ///< to every error report for which nothing is queued
  /// Of files, folders and inputs alike; several files are separated by "|".
  std::deque<std::optional<std::string>> choices;
  // What the user does in the forms.
  std::function<void(frmOptions&)> useOptions;
  std::function<void(frmLogin&)> useLogin;
  std::function<void(frmLabel&)> useLabel;

  /// Lets the user log in as "me" whenever asked to.
  void LogsIn() {
    useLogin = [](frmLogin& form) {
      form.txtUserName.text.Set("me");
      form.cmdOK.Execute();
    };
  }

  Answer Ask(const Message& message) override {
    journal_.push_back(Shown(message));
    const bool isReport = message.buttons == Buttons::AbortRetryIgnore;
    if (answers.empty()) return isReport && toReports ? *toReports : SafeAnswer(message.buttons);
    const Answer answer = answers.front();
    answers.pop_front();
    return answer;
  }
  std::optional<std::string> OpenFile(const FileChoice& choice) override {
    return Choose("open " + choice.title + "|" + choice.filter + "|" + choice.name);
  }
  std::vector<std::string> OpenFiles(const FileChoice& choice) override {
    const auto files = OpenFile(choice);
    if (!files) return {};
    const auto paths = Split(*files, '|');
    return {paths.begin(), paths.end()};
  }
  std::optional<std::string> OpenFileOrFolder(const FileChoice& choice) override {
    return Choose("open or folder " + choice.title + "|" + choice.filter + "|" + choice.name);
  }
  std::optional<std::string> SaveFile(const FileChoice& choice) override {
    return Choose("save " + choice.title + "|" + choice.filter + "|" + choice.name);
  }
  std::optional<std::string> BrowseForDir(const std::string& title) override {
    return Choose("folder " + title);
  }
  std::optional<std::string> Input(const std::string& prompt, const std::string& initial) override {
    return Choose("input " + prompt + "|" + initial);
  }
  void ShowOptions(frmOptions& form) override {
    journal_.emplace_back("options");
    if (useOptions) useOptions(form);
  }
  void ShowLogin(frmLogin& form) override {
    journal_.emplace_back("login");
    if (useLogin) useLogin(form);
  }
  void ShowLabel(frmLabel& form) override {
    journal_.emplace_back("label");
    if (useLabel) useLabel(form);
  }

 private:
  std::optional<std::string> Choose(const std::string& line) {
    journal_.push_back(line);
    if (choices.empty()) return std::nullopt;
    auto choice = choices.front();
    choices.pop_front();
    return choice;
  }

  Journal& journal_;
};

}  // namespace gorbex::test
