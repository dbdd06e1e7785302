#pragma once

#include <cstddef>
#include <cstdint>
#include <optional>
#include <string>

#include "platform/event_pump.h"
#include "platform/tool.h"

namespace gorbex {

/// The most bytes of a tool's output.
inline constexpr std::size_t kMostToolOutput = std::size_t{256} << 20U;

/// A running tool. Destroying it ends the tool.
class RunningTool {
 public:
  virtual ~RunningTool() = default;

  /// Waits for a moment or until the tool writes something, and takes its output. Returns the exit
  /// code when the tool has ended.
  [[nodiscard]] virtual std::optional<std::uint32_t> Advance() = 0;

  std::string output;
  std::string errorOutput;
};

/// Waits for the tool's end as the call wants it, and lets events be handled meanwhile (null for
/// none).
[[nodiscard]] ToolOutcome AwaitEnd(RunningTool& tool, const ToolCall& call, EventPump* events);

}  // namespace gorbex
