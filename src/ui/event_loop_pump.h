#pragma once

#include "platform/event_pump.h"

namespace gorbex::ui {

/// Lets the window live while the program waits. Waits may nest: a command that the user gives
/// meanwhile can also wait.
class EventLoopPump : public EventPump {
 public:
  void DoEvents() override;
};

}  // namespace gorbex::ui
