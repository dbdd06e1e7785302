#pragma once

#include <functional>

#include "platform/event_pump.h"

namespace gorbex::test {

/// Counts how often the program lets the user act, and acts as the user through a hook.
struct RecordingEvents : EventPump {
  int count = 0;
  std::function<void()> onEvents;

  void DoEvents() override {
    ++count;
    if (onEvents) onEvents();
  }
};

}  // namespace gorbex::test
