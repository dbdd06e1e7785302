#include "cli/console_dialogs.h"

#include <istream>
#include <ostream>
#include <string_view>

#include "cli/text_output.h"
#include "core/label_form.h"
#include "core/login_form.h"
#include "platform/code_page.h"

namespace gorbex::cli {
namespace {

struct Choice {
  Answer answer;
  std::string_view name;
};

std::vector<Choice> ChoicesOf(Buttons buttons) {
  switch (buttons) {
    case Buttons::Ok:
      return {{Answer::Ok, "OK"}};
    case Buttons::OkCancel:
      return {{Answer::Ok, "OK"}, {Answer::Cancel, "Cancel"}};
    case Buttons::YesNo:
      return {{Answer::Yes, "Yes"}, {Answer::No, "No"}};
    case Buttons::AbortRetryIgnore:
      return {{Answer::Abort, "Abort"}, {Answer::Retry, "Retry"}, {Answer::Ignore, "Ignore"}};
  }
  return {};
}

std::string_view NameOf(Answer answer, Buttons buttons) {
  for (const Choice& choice : ChoicesOf(buttons)) {
    if (choice.answer == answer) return choice.name;
  }
  return "";
}

std::string Offered(Buttons buttons) {
  std::string text;
  for (const Choice& choice : ChoicesOf(buttons)) {
    text.append(text.empty() ? "" : "/").append(choice.name);
  }
  return text;
}

}  // namespace

Answer ConsoleDialogs::Ask(const Message& message) {
  std::ostream& err = frame_.streams.err;
  err << Plain(message.text) << '\n' << std::flush;
  if (message.buttons == Buttons::Ok) return Answer::Ok;
  if (Asks()) return Ask(message.buttons);
  const Answer answer = Preset(message.buttons);
  err << "  [" << Offered(message.buttons) << "] answered: " << NameOf(answer, message.buttons)
      << '\n';
  return answer;
}

Answer ConsoleDialogs::Preset(Buttons buttons) const {
  if (frame_.yes && buttons == Buttons::YesNo) return Answer::Yes;
  if (frame_.yes && buttons == Buttons::OkCancel) return Answer::Ok;
  return SafeAnswer(buttons);
}

// An answer is known by its first letters; the end of the input, or of the program, is the safe
// one.
Answer ConsoleDialogs::Ask(Buttons buttons) {
  for (;;) {
    const auto line = AskLine("  [" + Offered(buttons) + "] ");
    if (!line) return SafeAnswer(buttons);
    if (line->empty()) continue;
    for (const Choice& choice : ChoicesOf(buttons)) {
      if (EqualsIgnoringCase(choice.name.substr(0, line->size()), *line)) return choice.answer;
    }
  }
}

std::optional<std::string> ConsoleDialogs::AskLine(const std::string& prompt) {
  frame_.streams.err << prompt << std::flush;
  return ReadLine();
}

std::optional<std::string> ConsoleDialogs::ReadLine() {
  const Streams& streams = frame_.streams;
  if (streams.awaitInput && !streams.awaitInput()) return std::nullopt;
  std::string line;
  if (!std::getline(streams.in, line)) return std::nullopt;
  return line;
}

std::optional<std::string> ConsoleDialogs::AskSecret(const std::string& prompt) {
  frame_.streams.err << prompt << std::flush;
  auto line = frame_.streams.readSecret ? frame_.streams.readSecret() : ReadLine();
  frame_.streams.err << '\n';
  return line;
}

std::optional<std::string> ConsoleDialogs::OpenFile(const FileChoice& choice) {
  if (!Asks()) return std::nullopt;
  for (;;) {
    const auto typed = AskLine(Plain(choice.title) + ": ");
    if (!typed || typed->empty()) return std::nullopt;
    if (auto path = fileOf ? fileOf(*typed) : FromUtf8(*typed)) return path;
    frame_.streams.err << *typed << ": no such file\n";
  }
}

std::vector<std::string> ConsoleDialogs::OpenFiles(const FileChoice& choice) {
  std::vector<std::string> paths;
  for (;;) {
    const auto path = OpenFile(choice);
    if (!path) return paths;
    paths.push_back(*path);
  }
}

std::optional<std::string> ConsoleDialogs::Input(const std::string& prompt,
                                                 const std::string& initial) {
  if (!Asks()) return std::nullopt;
  const std::string proposal = initial.empty() ? "" : " [" + Plain(initial) + "]";
  const auto line = AskLine(Plain(prompt) + proposal + ": ");
  if (!line) return std::nullopt;
  if (line->empty()) return initial.empty() ? std::nullopt : std::optional(initial);
  return FromUtf8(*line);
}

void ConsoleDialogs::ShowLogin(frmLogin& form) {
  if (!Asks()) {
    TryLogin(form, form.txtUserName.text.Get(), frame_.streams.password);
    form.hidden.Set(true);
    return;
  }
  while (!form.hidden.Get() && !(isEnding && isEnding())) {
    const std::string known = form.txtUserName.text.Get();
    const auto user = AskLine(known.empty() ? "User: " : "User [" + Plain(known) + "]: ");
    const auto password = AskSecret("Password: ");
    if (!user || !password) break;
    const auto typed = user->empty() ? known : FromUtf8(*user);
    TryLogin(form, typed, *password);
  }
  if (!form.hidden.Get()) form.cmdCancel.Execute();
}

// A name or password that the code page cannot express cannot be right.
void ConsoleDialogs::TryLogin(frmLogin& form, const std::optional<std::string>& user,
                              const std::string& password) {
  const auto secret = FromUtf8(password);
  if (!user || !secret) {
    frame_.streams.err << "The user or the password holds a character that cannot be used.\n";
    return;
  }
  form.txtUserName.text.Set(*user);
  form.txtPassword.text.Set(*secret);
  form.cmdOK.Execute();
}

void ConsoleDialogs::ShowLabel(frmLabel& form) {
  form.cmdOK.Execute();
}

}  // namespace gorbex::cli
