#include "tests/support/scripted_processes.h"

#include <utility>

namespace gorbex::test {
namespace {

class ScriptedProcess : public Process {
 public:
  ScriptedProcess(std::string commandLine, ScriptedProcesses::Body body, int polls,
                  ManualClock& clock)
      : commandLine_(std::move(commandLine)),
        body_(std::move(body)),
        polls_(polls),
        clock_(clock) {}

  [[nodiscard]] std::optional<std::uint32_t> ExitCode(std::chrono::milliseconds patience) override {
    if (exitCode_) return exitCode_;
    if (polls_-- > 0) {
      clock_.Advance(patience);
      return std::nullopt;
    }
    exitCode_ = body_(commandLine_);
    return exitCode_;
  }

 private:
  std::string commandLine_;
  ScriptedProcesses::Body body_;
  int polls_;
  ManualClock& clock_;
  std::optional<std::uint32_t> exitCode_;
};

}  // namespace

void ScriptedProcesses::Queue(Body body) {
  queue_.emplace_back(std::move(body));
}

void ScriptedProcesses::QueueExitCode(std::uint32_t exitCode) {
  Queue([exitCode](const std::string&) { return exitCode; });
}

void ScriptedProcesses::QueueRefusal(const RuntimeError& error) {
  queue_.emplace_back(error);
}

StartResult ScriptedProcesses::Start(const std::string& commandLine) {
  std::variant<Body, RuntimeError> next = otherwise;
  if (!queue_.empty()) {
    next = std::move(queue_.front());
    queue_.pop_front();
  }
  if (const auto* refusal = std::get_if<RuntimeError>(&next)) return *refusal;
  journal_.push_back("start " + commandLine);
  return std::make_unique<ScriptedProcess>(commandLine, std::get<Body>(std::move(next)), polls,
                                           clock_);
}

}  // namespace gorbex::test
