#pragma once

#include <array>
#include <cstddef>
#include <functional>
#include <memory>

#include "core/signal.h"

namespace gorbex {

/// Kinds of work. Several can go on at once, because the user can act while one waits.
enum class Task {
  Run,            ///< a run walks the queue
  TestProject,    ///< the test project that a run ends with
  Build,          ///< a command that builds: a run or an immediate build
  Compile,        ///< of one project, or of several that a run builds at the same time
  Program,        ///< a started program is waited for
  MailStart,      ///< the mail system is opened
  Mailbox,        ///< a look into the mailbox
  Request,        ///< a request by mail is performed
  SourceControl,  ///< its client works
  Batch,          ///< several gets that must bring the same state of the database
  Login,          ///< to source control
};

/// Knows which tasks are at work in the program, and so which may begin.
class Work {
 public:
  /// The system's way to keep other programs from building while the result lives; null while
  /// another one builds.
  using KeepOthersOut = std::function<std::shared_ptr<void>()>;

  explicit Work(KeepOthersOut keepOthersOut) : keepOthersOut_(std::move(keepOthersOut)) {}

  /// The task goes on until the result is released; this object must outlive the result. A run, a
  /// test project or a look into the mailbox that begins now ignores earlier requests to stop.
  [[nodiscard]] std::shared_ptr<void> Begin(Task task);

  /// As Begin, with other programs kept from building; null while another one builds.
  [[nodiscard]] std::shared_ptr<void> BeginAlone(Task task);

  /// Keeps other programs from building until all its results are released. Null while another
  /// one builds.
  [[nodiscard]] std::shared_ptr<void> TakeTurn();

  [[nodiscard]] bool Goes(Task task) const { return counts_[Index(task)] > 0; }

  [[nodiscard]] bool MayChangeQueue() const { return !Goes(Task::Run); }
  [[nodiscard]] bool MayBuild() const { return !Goes(Task::Build) && !Goes(Task::Compile); }
  /// Registrations must not change while a compiler runs.
  [[nodiscard]] bool MayRegister() const { return !Goes(Task::Compile); }
  [[nodiscard]] bool MayUseSourceControl() const {
    return !Goes(Task::SourceControl) && !Goes(Task::Batch);
  }

  /// Whether something would be lost if the program ended now.
  [[nodiscard]] bool Builds() const {
    return Goes(Task::Run) || Goes(Task::Program) || Goes(Task::Request);
  }

  /// Asks a run to end after its project, and a look into the mailbox after its request.
  void StopAfterThis();
  [[nodiscard]] bool RunStops() const { return runStops_ || ends_; }
  [[nodiscard]] bool LookStops() const { return lookStops_ || ends_; }

  /// Asks everything to end as soon as it can; from now on no program is started.
  void EndNow() { ends_ = true; }
  [[nodiscard]] bool Ends() const { return ends_; }

  /// Announced when a kind of task begins or has ended.
  Signal<> changed;

  /// Announced when this program has just taken its turn to build.
  Signal<> turnTaken;

 private:
  static constexpr std::size_t kTasks = static_cast<std::size_t>(Task::Login) + 1;
  static constexpr std::size_t Index(Task task) { return static_cast<std::size_t>(task); }

  void End(Task task);

  KeepOthersOut keepOthersOut_;
  std::array<int, kTasks> counts_{};
  std::weak_ptr<void> turn_;
  bool runStops_ = false;
  bool lookStops_ = false;
  bool ends_ = false;
};

}  // namespace gorbex
