#include "core/shell.h"

#include <utility>
#include <variant>

namespace gorbex {

Shell::Program::Program(Shell& shell, std::unique_ptr<Process> process)
    : shell_(shell),
      process_(std::move(process)),
      task_(shell.work_.Begin(Task::Program)),
      start_(shell.clock_.Elapsed()) {
  shell_.running_.push_back(this);
}

Shell::Program::~Program() {
  std::erase(shell_.running_, this);
}

std::optional<Shell::Ended> Shell::Program::HasEnded(std::chrono::milliseconds patience) {
  const auto exitCode = process_->ExitCode(patience);
  if (!exitCode) return std::nullopt;
  if (isTerminated_) return Ended::ByUs;
  return *exitCode == 0 ? Ended::Well : Ended::Badly;
}

void Shell::Program::Terminate() {
  process_->Terminate();
  isTerminated_ = true;
}

bool Shell::ShellAndWait(const std::string& commandLine, Life life) {
  const auto program = Start(commandLine, life);
  return program != nullptr && Wait(*program) == Ended::Well;
}

std::unique_ptr<Shell::Program> Shell::Start(const std::string& commandLine, Life life) {
  if (work_.Ends()) return nullptr;
  starting.Emit();
  StartResult started = processes_.Start(commandLine);
  if (const auto* failure = std::get_if<RuntimeError>(&started)) throw *failure;
  auto& process = std::get<std::unique_ptr<Process>>(started);
  if (life == Life::ItsOwn) process->OutliveProgram();
  return std::make_unique<Program>(*this, std::move(process));
}

// The user may end a program while its end is handled.
Shell::Ended Shell::Wait(Program& program) {
  for (;;) {
    const bool hasEnded = program.HasEnded(kPatience).has_value();
    events_.DoEvents();
    if (hasEnded) return program.HasEnded({}).value_or(Ended::Badly);
  }
}

void Shell::TerminateAll() {
  for (Program* program : running_) program->Terminate();
}

std::size_t Shell::TerminateAfter(std::chrono::milliseconds limit) {
  std::size_t ended = 0;
  for (Program* program : running_) {
    if (program->isTerminated_ || clock_.Elapsed() - program->start_ < limit) continue;
    program->Terminate();
    ++ended;
  }
  return ended;
}

}  // namespace gorbex
