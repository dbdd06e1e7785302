#include "platform/running_tool.h"

#include <chrono>
#include <utility>

namespace gorbex {

ToolOutcome AwaitEnd(RunningTool& tool, const ToolCall& call, EventPump* events) {
  using Clock = std::chrono::steady_clock;
  constexpr auto kBetweenEvents = std::chrono::milliseconds(20);
  const auto start = Clock::now();
  for (auto lastEvents = start;;) {
    const auto exitCode = tool.Advance();
    if (tool.output.size() + tool.errorOutput.size() > kMostToolOutput) {
      return RuntimeError(ErrorNumber::OutOfMemory, call.program);
    }
    if (exitCode) {
      return ToolResult{*exitCode, std::move(tool.output), std::move(tool.errorOutput)};
    }
    if (call.patience && Clock::now() - start > *call.patience) {
      return RuntimeError::WithDescription(ErrorNumber::InvalidCall,
                                           "'" + call.program + "' took too long");
    }
    if (events == nullptr || Clock::now() - lastEvents < kBetweenEvents) continue;
    events->DoEvents();
    lastEvents = Clock::now();
  }
}

}  // namespace gorbex
