#pragma once

#include <optional>
#include <string>
#include <vector>

#include "core/dialogs.h"
#include "core/signal.h"

namespace gorbex {

/// The front end's dialogs, with every message and its answer announced to listeners.
class ObservedDialogs : public Dialogs {
 public:
  explicit ObservedDialogs(Dialogs& frontEnd) : frontEnd_(frontEnd) {}

  Answer Show(const Message& message) override {
    asking.Emit(message);
    const Answer answer = frontEnd_.Show(message);
    answered.Emit(message, answer);
    return answer;
  }
  std::optional<std::string> OpenFile(const FileChoice& choice) override {
    return frontEnd_.OpenFile(choice);
  }
  std::vector<std::string> OpenFiles(const FileChoice& choice) override {
    return frontEnd_.OpenFiles(choice);
  }
  std::optional<std::string> OpenFileOrFolder(const FileChoice& choice) override {
    return frontEnd_.OpenFileOrFolder(choice);
  }
  std::optional<std::string> SaveFile(const FileChoice& choice) override {
    return frontEnd_.SaveFile(choice);
  }
  std::optional<std::string> BrowseForDir(const std::string& title) override {
    return frontEnd_.BrowseForDir(title);
  }
  std::optional<std::string> Input(const std::string& prompt, const std::string& initial) override {
    return frontEnd_.Input(prompt, initial);
  }
  void ShowOptions(frmOptions& form) override { frontEnd_.ShowOptions(form); }
  void ShowLogin(frmLogin& form) override { frontEnd_.ShowLogin(form); }
  void ShowLabel(frmLabel& form) override { frontEnd_.ShowLabel(form); }

  Signal<Message> asking;
  Signal<Message, Answer> answered;

 private:
  Dialogs& frontEnd_;
};

}  // namespace gorbex
