#pragma once

#include <memory>
#include <optional>
#include <string>
#include <vector>

#include "app/program.h"
#include "cli/console_dialogs.h"
#include "cli/frame.h"
#include "platform/plain_text.h"

namespace gorbex::cli {

/// Does it. An error of the program becomes a failure that names what was typed.
template <class Act>
auto OrFail(const std::string& typed, const Act& act) {
  try {
    return act();
  } catch (const RuntimeError& error) {
    throw Failure(typed + ": " + Plain(error.Description()));
  }
}

/// One run of a command over the program: the host, the console's dialogs and the program itself.
class Session {
 public:
  explicit Session(const Frame& frame);

  Program& program() { return *program_; }
  [[nodiscard]] const Frame& frame() const { return frame_; }

  /// The program's path form of a typed path. Failure when it has none.
  [[nodiscard]] std::string ProgramPath(const std::string& typed) const;

  /// Failure when the stored settings could not be read: a command must not use others instead.
  void RequireSettings() const;

  /// Loads a build project file. Failure when it cannot be loaded as a whole, or when project files
  /// of it are missing.
  void Open(const std::string& typedPath);

  /// As Open, after LeaveJudgement(), with projects that cannot be read left out.
  void OpenToCheck(const std::string& typedPath);

  /// For a command that judges projects and references by itself: nothing is printed about them
  /// when they are read, and no reference is marked.
  void LeaveJudgement();

  /// As Open, with missing project files taken out of the build project.
  void OpenWithoutMissing(const std::string& typedPath) {
    Open(typedPath, BuildProjectFile::Unread::IsRemoved);
  }

  /// As Open, for commands that only look: queue rows whose projects could not be read are left out
  /// with a warning.
  void OpenToLook(const std::string& typedPath) {
    Open(typedPath, BuildProjectFile::Unread::IsLeftOut);
  }

  /// The path under which a project is loaded, however its letters were typed. Failure when it is
  /// not loaded.
  [[nodiscard]] std::string LoadedProject(const std::string& typedPath) const;

  /// Keeps other programs from building until the result is released. Waits for a program that
  /// builds already; null when the system wishes the program's end meanwhile.
  [[nodiscard]] std::shared_ptr<void> BuildAlone() const;

  /// Keeps other programs from changing build projects until the result is released.
  [[nodiscard]] std::shared_ptr<void> ChangeAlone() const;

  [[nodiscard]] Host& host() const { return *host_; }

  /// Saves the open build project to its file. Failure when it cannot be saved without losing the
  /// projects that could not be read, or what another program has changed since it was opened.
  void Save();

  /// Writes an output file of a command. Failure, with its name, when that is not possible.
  void Write(const std::string& typed, const std::string& text);

  /// Projects of the build project file that could not be read.
  [[nodiscard]] const std::vector<std::string>& LeftOut() const { return leftOut_; }

  /// Prints a line for the user on the error stream.
  void Warn(const std::string& utf8) const;

  /// Ends the source-control client's present step when the system wishes the program's end, by a
  /// separate error; once, because the client's clean-up must not be ended, too.
  void EndStepOnRequest();

  /// Called between the polls of a running compiler.
  std::function<void()> onIdle;

 private:
  class Pump : public EventPump {
   public:
    explicit Pump(Session& session) : session_(session) {}
    void DoEvents() override {
      if (session_.onIdle) session_.onIdle();
    }

   private:
    Session& session_;
  };

  void ListenForProblems();
  void Open(const std::string& typedPath, BuildProjectFile::Unread unread);
  [[nodiscard]] std::optional<std::string> FileOf(const std::string& typed) const;
  [[nodiscard]] std::string RequiredBuildProject(const std::string& path,
                                                 const std::string& typedPath) const;

  const Frame& frame_;
  Pump pump_;
  ConsoleDialogs dialogs_;
  std::unique_ptr<Host> host_;
  std::unique_ptr<Program> program_;
  std::vector<std::string> leftOut_;
  std::string opened_;  ///< the build project file's bytes when it was opened
  Subscriptions subscriptions_;
  bool hasEndedStep_ = false;
  bool isQuiet_ = false;
  bool hasSettings_ = false;
};

}  // namespace gorbex::cli
