#pragma once

#include "platform/event_pump.h"
#include "platform/tool.h"

namespace gorbex {

/// Runs tools of the search path. The wait ends with the tool, even if it leaves a
/// helper running.
class WindowsToolRunner : public ToolRunner {
 public:
  /// From now on these events are handled while a tool runs; the pump outlives the runner's calls.
  void Handle(EventPump& events) { events_ = &events; }

  [[nodiscard]] ToolOutcome Run(const ToolCall& call) override;

 private:
  EventPump* events_ = nullptr;
};

}  // namespace gorbex
