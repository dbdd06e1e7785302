#pragma once

#include <chrono>
#include <cstddef>
#include <memory>
#include <optional>
#include <string>
#include <vector>

#include "core/signal.h"
#include "core/work.h"
#include "platform/clock.h"
#include "platform/event_pump.h"
#include "platform/process.h"

namespace gorbex {

/// Runs programs and waits for them while the user interface goes on.
class Shell {
 public:
  Shell(ProcessLauncher& processes, EventPump& events, const Clock& clock, Work& work)
      : processes_(processes), events_(events), clock_(clock), work_(work) {}

  enum class Ended { Well, Badly, ByUs };

  /// Whether a program is ended, where the system can do that, when this one is killed.
  enum class Life { EndsWithUs, ItsOwn };

  /// True exactly when the command ended with exit code 0. There is no time limit. The error of the
  /// launcher when the command cannot be started.
  bool ShellAndWait(const std::string& commandLine, Life life = Life::EndsWithUs);

  /// A started program that somebody waits for. The shell must outlive it.
  class Program {
   public:
    Program(Shell& shell, std::unique_ptr<Process> process);
    ~Program();
    Program(const Program&) = delete;
    Program& operator=(const Program&) = delete;

    /// Nothing while the program runs; waits for its end at most for the patience given.
    [[nodiscard]] std::optional<Ended> HasEnded(std::chrono::milliseconds patience);

    void Terminate();

   private:
    friend class Shell;

    Shell& shell_;
    std::unique_ptr<Process> process_;
    std::shared_ptr<void> task_;
    std::chrono::milliseconds start_;
    bool isTerminated_ = false;
  };

  /// Starts a program, for callers that wait for several. Null when everything is to end.
  [[nodiscard]] std::unique_ptr<Program> Start(const std::string& commandLine,
                                               Life life = Life::EndsWithUs);

  /// Waits for the end of a program.
  Ended Wait(Program& program);

  /// The time of one wait for a program's end, before the user interface has its turn: long enough
  /// to leave the processor to the program, short enough for the user.
  static constexpr std::chrono::milliseconds kPatience{10};

  /// Announced before a program is started.
  Signal<> starting;

  /// How many programs are being waited for.
  [[nodiscard]] std::size_t Running() const { return running_.size(); }

  /// Ends every program that is being waited for.
  void TerminateAll();

  /// Ends those of them that run for longer than the limit, and gives their number.
  std::size_t TerminateAfter(std::chrono::milliseconds limit);

 private:
  ProcessLauncher& processes_;
  EventPump& events_;
  const Clock& clock_;
  Work& work_;
  std::vector<Program*> running_;
};

}  // namespace gorbex
