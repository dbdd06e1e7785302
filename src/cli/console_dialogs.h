#pragma once

#include <optional>
#include <string>
#include <vector>

#include "cli/frame.h"
#include "core/dialogs.h"

namespace gorbex::cli {

/// Dialogs on a console: messages are printed, questions asked where somebody can answer. Otherwise
/// --yes or --no answers; without either the answer is the safe one and is printed.
class ConsoleDialogs : public Dialogs {
 public:
  explicit ConsoleDialogs(const Frame& frame) : frame_(frame) {}

  Answer Ask(const Message& message) override;

  /// Asks until there is a file of the path typed, or nothing is typed. Several files are asked for
  /// one by one.
  std::optional<std::string> OpenFile(const FileChoice& choice) override;
  std::vector<std::string> OpenFiles(const FileChoice& choice) override;
  std::optional<std::string> OpenFileOrFolder(const FileChoice& choice) override {
    return Input(choice.title, "");
  }
  std::optional<std::string> SaveFile(const FileChoice& choice) override {
    return Input(choice.title, "");
  }
  std::optional<std::string> BrowseForDir(const std::string& title) override {
    return Input(title, "");
  }
  std::optional<std::string> Input(const std::string& prompt, const std::string& initial) override;

  /// Does nothing: a console edits settings with another command.
  void ShowOptions(frmOptions& /*form*/) override {}

  /// Asks for user and password where somebody can answer. Elsewhere logs in once, with the user of
  /// the last login and the password in the environment's GORBEX_SCC_PASSWORD. A login that fails
  /// there is not cancelled: the next command tries again.
  void ShowLogin(frmLogin& form) override;

  /// Labels with what the form says, at once.
  void ShowLabel(frmLabel& form) override;

  /// Whether the program was told to end: nobody is asked to log in again then.
  std::function<bool()> isEnding;

  /// The program's path of a file as the user types it; nothing when there is no such file. Without
  /// this a path is taken as it is typed.
  std::function<std::optional<std::string>(const std::string& typed)> fileOf;

 private:
  [[nodiscard]] bool Asks() const { return frame_.streams.asks && !frame_.yes && !frame_.no; }
  [[nodiscard]] Answer Ask(Buttons buttons);
  [[nodiscard]] Answer Preset(Buttons buttons) const;
  [[nodiscard]] std::optional<std::string> AskLine(const std::string& prompt);
  [[nodiscard]] std::optional<std::string> ReadLine();
  [[nodiscard]] std::optional<std::string> AskSecret(const std::string& prompt);
  void TryLogin(frmLogin& form, const std::optional<std::string>& user,
                const std::string& password);

  const Frame& frame_;
};

}  // namespace gorbex::cli
