#include "tests/support/scripted_processes.h"

namespace gorbex::test {
namespace {

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

}  // namespace

StartResult ScriptedProcesses::Start(const std::string& commandLine) {
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

}  // namespace gorbex::test
