#include "core/shell.h"

#include <chrono>
#include <memory>
#include <optional>
#include <variant>

namespace gorbex {

/// Keeps a process in the list of those waited for.
class Shell::Waiting {
 public:
  Waiting(Shell& shell, Process& process) : shell_(shell), task_(shell.work_.Begin(Task::Program)) {
    shell_.running_.push_back({&process, false});
  }
  // Waits nest, so the last to begin is the first to end.
  ~Waiting() { shell_.running_.pop_back(); }
  Waiting(const Waiting&) = delete;
  Waiting& operator=(const Waiting&) = delete;

  [[nodiscard]] bool IsTerminated() const { return shell_.running_.back().isTerminated; }

 private:
  Shell& shell_;
  std::shared_ptr<void> task_;
};

bool Shell::ShellAndWait(const std::string& commandLine) {
  return RunAndWait(commandLine) == Ended::Well;
}

Shell::Ended Shell::RunAndWait(const std::string& commandLine, Life life) {
  // Long enough to leave the processor to the child, short enough for a window to feel alive.
  constexpr std::chrono::milliseconds kPatience{10};
  if (work_.Ends()) return Ended::ByUs;
  starting.Emit();
  const StartResult started = processes_.Start(commandLine);
  if (const auto* failure = std::get_if<RuntimeError>(&started)) throw *failure;
  const auto& process = std::get<std::unique_ptr<Process>>(started);
  if (life == Life::ItsOwn) process->OutliveProgram();
  const Waiting waiting(*this, *process);
  for (;;) {
    const auto exitCode = process->ExitCode(kPatience);
    events_.DoEvents();
    if (!exitCode.has_value()) continue;
    if (waiting.IsTerminated()) return Ended::ByUs;
    return *exitCode == 0 ? Ended::Well : Ended::Badly;
  }
}

void Shell::TerminateAll() {
  for (auto& running : running_) {
    running.process->Terminate();
    running.isTerminated = true;
  }
}

}  // namespace gorbex
