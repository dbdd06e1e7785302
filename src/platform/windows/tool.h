#pragma once

#include "platform/event_pump.h"
#include "platform/tool.h"

namespace gorbex {

/// Runs tools of the search path. One that leaves a helper running behind it is not waited for
/// longer than itself.
class WindowsToolRunner : public ToolRunner {
 public:
  /// From now on these events are handled while a tool runs; the pump outlives the runner's calls.
  void Handle(EventPump& events) { events_ = &events; }

  [[nodiscard]] ToolOutcome Run(const ToolCall& call) override;

 private:
  EventPump* events_ = nullptr;
};

}  // namespace gorbex
