#pragma once

#include <deque>
#include <functional>
#include <string>
#include <utility>
#include <vector>

#include "platform/clock.h"
#include "platform/process.h"
#include "tests/support/journal.h"

namespace gorbex::test {

/// A clock that only moves when told to.
struct ManualClock : Clock {
  CivilTime now{2026, 3, 4, 15, 6, 7};
  std::chrono::milliseconds elapsed{0};
  FileTime fileNow{60ULL * 86'400 * 10'000'000};  ///< a day after the files' times

  [[nodiscard]] CivilTime LocalNow() const override { return now; }
  [[nodiscard]] FileTime Now() const override { return fileNow; }
  [[nodiscard]] std::chrono::milliseconds Elapsed() const override { return elapsed; }
};

/// A process that has its body run when it ends.
class ScriptedProcess : public Process {
 public:
  ScriptedProcess(std::function<std::uint32_t()> body, int polls, ManualClock& clock)
      : body_(std::move(body)), polls_(polls), clock_(clock) {}

  [[nodiscard]] std::optional<std::uint32_t> ExitCode(std::chrono::milliseconds patience) override {
    if (polls_-- > 0) {
      clock_.elapsed += patience;
      return std::nullopt;
    }
    if (!exitCode_) exitCode_ = body_();
    return exitCode_;
  }
  void Terminate() override {
    body_ = [] { return 1U; };
    polls_ = 0;
  }

 private:
  std::function<std::uint32_t()> body_;
  int polls_;
  ManualClock& clock_;
  std::optional<std::uint32_t> exitCode_;
};

/// Processes that do what the test says when they end. Journals "start COMMANDLINE".
class ScriptedProcesses : public ProcessLauncher {
 public:
  /// Runs when the process ends and gives its exit code.
  using Body = std::function<std::uint32_t(const std::string& commandLine)>;

  ScriptedProcesses(Journal& journal, ManualClock& clock) : journal_(journal), clock_(clock) {}

  /// What a start does for which nothing is queued.
  Body otherwise = [](const std::string&) { return 0U; };

  /// How many polls find a process still active; each moves the clock by the poll's patience.
  int polls = 0;

  void Queue(Body body) { queue_.emplace_back(std::move(body)); }
  void QueueExitCode(std::uint32_t exitCode) {
    Queue([exitCode](const std::string&) { return exitCode; });
  }
  void QueueRefusal(const RuntimeError& error) { queue_.emplace_back(error); }

  [[nodiscard]] StartResult Start(const std::string& commandLine) override {
    std::variant<Body, RuntimeError> next = otherwise;
    if (!queue_.empty()) {
      next = std::move(queue_.front());
      queue_.pop_front();
    }
    if (const auto* refusal = std::get_if<RuntimeError>(&next)) return *refusal;
    journal_.push_back("start " + commandLine);
    auto body = [run = std::get<Body>(std::move(next)), commandLine] { return run(commandLine); };
    return std::make_unique<ScriptedProcess>(std::move(body), polls, clock_);
  }

  /// Journals "start PROGRAM|ARGUMENT|ARGUMENT".
  [[nodiscard]] StartResult StartProgram(const std::string& program,
                                         const std::vector<std::string>& arguments) override {
    std::string call = program;
    for (const std::string& argument : arguments) call += "|" + argument;
    return Start(call);
  }

 private:
  Journal& journal_;
  ManualClock& clock_;
  std::deque<std::variant<Body, RuntimeError>> queue_;
};

}  // namespace gorbex::test
