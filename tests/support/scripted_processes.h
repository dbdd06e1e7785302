#pragma once

#include <deque>
#include <functional>
#include <string>
#include <utility>

#include "platform/clock.h"
#include "platform/process.h"
#include "tests/support/journal.h"

namespace gorbex::test {

/// A clock that only moves when told to.
struct ManualClock : Clock {
  CivilTime now{2026, 3, 4, 15, 6, 7};
  std::chrono::milliseconds elapsed{0};

  [[nodiscard]] CivilTime LocalNow() const override { return now; }
  [[nodiscard]] std::chrono::milliseconds Elapsed() const override { return elapsed; }
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

  [[nodiscard]] StartResult Start(const std::string& commandLine) override;

 private:
  Journal& journal_;
  ManualClock& clock_;
  std::deque<std::variant<Body, RuntimeError>> queue_;
};

}  // namespace gorbex::test
