#include "cli/time_limit.h"

#include <string>

namespace gorbex::cli {

void TimeLimit::Tick() {
  if (limit_.count() == 0) return;
  for (auto ended = session_.program().shell.TerminateAfter(limit_); ended > 0; --ended) {
    session_.Warn("the compiler is ended: it takes longer than the limit of " +
                  std::to_string(limit_.count()) + " s");
  }
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
