#include "cli/time_limit.h"

#include <string>
#include <utility>

namespace gorbex::cli {

TimeLimit::TimeLimit(Session& session, std::chrono::seconds limit)
    : session_(session), limit_(limit) {
  Program& program = session.program();
  listening_ = program.work.changed.Connect([this, &program] {
    const bool isWaiting = program.work.Goes(Task::Program);
    if (std::exchange(isWaiting_, isWaiting) == isWaiting) return;
    begun_.reset();
    if (isWaiting) begun_ = program.platform.clock.Elapsed();
  });
}

void TimeLimit::Tick() {
  Program& program = session_.program();
  if (limit_.count() == 0 || !begun_) return;
  if (program.platform.clock.Elapsed() - *begun_ < limit_) return;
  begun_.reset();
  session_.Warn("the compiler is ended: it takes longer than the limit of " +
                std::to_string(limit_.count()) + " s");
  program.shell.TerminateAll();
}

void AddTimeLimit(CLI::App& command, int& seconds) {
  constexpr int kWeek = 7 * 24 * 3600;
  command
      .add_option(
          "--time-limit", seconds,
          "Seconds after which a compiler that is still at work is ended; its project fails")
      ->check(CLI::Range(1, kWeek));
}

}  // namespace gorbex::cli
