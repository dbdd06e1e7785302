#pragma once

#include <cstddef>
#include <optional>
#include <string>
#include <vector>

#include "core/signal.h"

namespace gorbex {

struct frmLabel;
struct frmLogin;
struct frmOptions;

enum class Buttons { Ok, OkCancel, YesNo, AbortRetryIgnore };
enum class MessageIcon { None, Question, Exclamation, CriticalStop };
enum class Answer { Ok, Cancel, Yes, No, Abort, Retry, Ignore };

struct Message {
  std::string text;
  Buttons buttons = Buttons::Ok;
  MessageIcon icon = MessageIcon::None;
  std::string caption{};  ///< empty: the application's title
};

struct FileChoice {
  std::string title;
  std::string filter;     ///< "Text|pattern|Text|pattern"
  std::string name;       ///< the proposed name or pattern
  std::string purpose{};  ///< what the choice is for, where a front end has room for it
  std::string typed{};    ///< a path to begin with
};

/// The answer that changes nothing and ends the asking command, for a front end that nobody
/// watches.
[[nodiscard]] constexpr Answer SafeAnswer(Buttons buttons) {
  constexpr Answer kSafe[] = {Answer::Ok, Answer::Cancel, Answer::No, Answer::Abort};
  return kSafe[static_cast<std::size_t>(buttons)];
}

/// Everything the program asks or tells its user modally. Texts are code-page bytes; a choice that
/// was cancelled is nothing. A question for Yes or No that is dismissed gives Cancel.
class Dialogs {
 public:
  virtual ~Dialogs() = default;

  /// Shows a message until it is answered. Listeners hear of both.
  Answer Show(const Message& message) {
    asking.Emit(message);
    const Answer answer = Ask(message);
    answered.Emit(message, answer);
    return answer;
  }

  Signal<Message> asking;
  Signal<Message, Answer> answered;

  /// As Show, but no listener hears of it.
  virtual Answer Ask(const Message& message) = 0;
  virtual std::optional<std::string> OpenFile(const FileChoice& choice) = 0;
  /// None when it was cancelled.
  virtual std::vector<std::string> OpenFiles(const FileChoice& choice) = 0;

  /// As OpenFile, but a folder can be chosen, too.
  virtual std::optional<std::string> OpenFileOrFolder(const FileChoice& choice) = 0;
  virtual std::optional<std::string> SaveFile(const FileChoice& choice) = 0;
  virtual std::optional<std::string> BrowseForDir(const std::string& title) = 0;
  virtual std::optional<std::string> Input(const std::string& prompt,
                                           const std::string& initial) = 0;

  /// Shows the options dialog over its state until the user closes it.
  virtual void ShowOptions(frmOptions& form) = 0;

  /// Show the source-control dialogs over their states until they are hidden.
  virtual void ShowLogin(frmLogin& form) = 0;
  virtual void ShowLabel(frmLabel& form) = 0;
};

}  // namespace gorbex
