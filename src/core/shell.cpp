#include "core/shell.h"

#include <chrono>
#include <memory>
#include <optional>
#include <variant>

namespace gorbex {

bool Shell::ShellAndWait(const std::string& commandLine) {
  // Long enough to leave the processor to the child, short enough for a window to feel alive.
  constexpr std::chrono::milliseconds kPatience{10};
  const StartResult started = processes_.Start(commandLine);
  if (const auto* failure = std::get_if<RuntimeError>(&started)) throw *failure;
  const auto& process = std::get<std::unique_ptr<Process>>(started);
  for (;;) {
    const auto exitCode = process->ExitCode(kPatience);
    events_.DoEvents();
    if (exitCode.has_value()) return *exitCode == 0;
  }
}

}  // namespace gorbex
