#pragma once

#include "platform/event_pump.h"
#include "platform/linux/prefix.h"
#include "platform/tool.h"

namespace gorbex {

/// Runs tools of the host, away from our terminal, so that none can ask there. The wait ends with
/// the tool, even if it leaves a helper running.
class LinuxToolRunner : public ToolRunner, public EventHandler {
 public:
  explicit LinuxToolRunner(const Prefix& prefix) : prefix_(prefix) {}

  [[nodiscard]] ToolOutcome Run(const ToolCall& call) override;

 private:
  const Prefix& prefix_;
};

}  // namespace gorbex
