#pragma once

#include "platform/event_pump.h"
#include "platform/tool.h"

namespace gorbex {

/// Runs tools of the search path. The wait ends with the tool, even if it leaves a
/// helper running.
class WindowsToolRunner : public ToolRunner, public EventHandler {
 public:
  [[nodiscard]] ToolOutcome Run(const ToolCall& call) override;
};

}  // namespace gorbex
