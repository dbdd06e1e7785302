#pragma once

namespace gorbex {

/// Lets the user interface handle its events; called while the program waits for something.
class EventPump {
 public:
  virtual ~EventPump() = default;
  virtual void DoEvents() {}
};

/// Waits for others, and lets events be handled meanwhile.
class EventHandler {
 public:
  /// From now on these events are handled during waits; the pump outlives them.
  void Handle(EventPump& events) { events_ = &events; }

 protected:
  EventPump* events_ = nullptr;
};

}  // namespace gorbex
