#pragma once

#include <cstddef>
#include <cstdint>
#include <optional>
#include <string>

#include "platform/event_pump.h"
#include "platform/tool.h"

namespace gorbex {

/// No tool says more, in bytes.
inline constexpr std::size_t kMostToolOutput = std::size_t{256} << 20U;

/// A tool on its way to its end, as a system runs it. One that is let go of before is ended.
class RunningTool {
 public:
  virtual ~RunningTool() = default;

  /// Waits for a moment, but not on when the tool says something, and takes what it said. The exit
  /// code when the tool has ended.
  [[nodiscard]] virtual std::optional<std::uint32_t> Advance() = 0;

  std::string output;
  std::string errorOutput;
};

/// Waits for the tool's end as the call wants it, and lets events be handled meanwhile (null for
/// none).
[[nodiscard]] ToolOutcome AwaitEnd(RunningTool& tool, const ToolCall& call, EventPump* events);

}  // namespace gorbex
