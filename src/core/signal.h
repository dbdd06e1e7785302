#pragma once

#include <functional>
#include <memory>
#include <utility>
#include <vector>

namespace gorbex {

/// Ends its connection when destroyed; may outlive the signal.
using Subscription = std::shared_ptr<void>;

/// A change that others may listen to. Listeners are called in the order they connected; connecting
/// and ending connections is allowed while the signal is being emitted.
template <class... Args>
class Signal {
 public:
  using Listener = std::function<void(const Args&...)>;

  [[nodiscard]] Subscription Connect(Listener listener) {
    auto held = std::make_shared<Listener>(std::move(listener));
    listeners_.push_back(held);
    return held;
  }

  void Emit(const Args&... args) {
    if (listeners_.empty()) return;
    const auto current = listeners_;
    for (const auto& weak : current) {
      if (const auto listener = weak.lock()) (*listener)(args...);
    }
    std::erase_if(listeners_, [](const auto& weak) { return weak.expired(); });
  }

 private:
  std::vector<std::weak_ptr<Listener>> listeners_;
};

/// Connections to signals, ended together.
class Subscriptions {
 public:
  template <class... Args, class Listener>
  void Add(Signal<Args...>& signal, Listener&& listener) {
    held_.push_back(signal.Connect(std::forward<Listener>(listener)));
  }

  void Clear() { held_.clear(); }

 private:
  std::vector<Subscription> held_;
};

}  // namespace gorbex
