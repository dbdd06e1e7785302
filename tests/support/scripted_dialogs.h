#pragma once

#include <deque>
#include <optional>
#include <string>
#include <string_view>

#include "core/dialogs.h"
#include "tests/support/journal.h"

namespace gorbex::test {

/// A user who answers what a test queued; asked for more, one who gives the safe answer and cancels
/// every choice. Journals messages (see Shown), "open TITLE|FILTER|NAME", "save TITLE|FILTER|NAME",
/// "folder TITLE" and "input PROMPT|INITIAL".
class ScriptedDialogs : public Dialogs {
 public:
  explicit ScriptedDialogs(Journal& journal) : journal_(journal) {}

  std::deque<Answer> answers;
  std::deque<std::optional<std::string>> choices;  ///< of files, folders and inputs alike

  Answer Show(const Message& message) override;
  std::optional<std::string> OpenFile(const FileChoice& choice) override {
    return Choose("open " + choice.title + "|" + choice.filter + "|" + choice.name);
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

 private:
  std::optional<std::string> Choose(const std::string& line);

  Journal& journal_;
};

/// The journal's line for a message: "show TEXT" when it is plain, else buttons, icon and caption
/// before the text: "show [AbortRetryIgnore Exclamation GorbexBuilder Error.] TEXT".
[[nodiscard]] std::string Shown(const Message& message);

/// The journal's line for the standard report of an error, without its line number ("line *in").
[[nodiscard]] std::string Reported(int number, std::string_view description,
                                   std::string_view procedure);

/// A journal line with the line number of an error report replaced by "*".
[[nodiscard]] std::string WithoutLineNumber(std::string line);

}  // namespace gorbex::test
