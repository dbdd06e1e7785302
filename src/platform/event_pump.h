#pragma once

namespace gorbex {

/// Lets the user interface handle its events; called while the program waits for something.
class EventPump {
 public:
  virtual ~EventPump() = default;
  virtual void DoEvents() {}
};

}  // namespace gorbex
