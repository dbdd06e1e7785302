#pragma once

#include <utility>

#include "core/signal.h"

namespace gorbex {

/// One value of the window that front ends draw. Every assignment is announced, also of an equal
/// value.
template <class T>
class Property {
 public:
  Property() = default;
  explicit Property(T initial) : value_(std::move(initial)) {}

  [[nodiscard]] const T& Get() const { return value_; }

  void Set(T value) {
    value_ = std::move(value);
    changed.Emit(value_);
  }

  Signal<T> changed;

 private:
  T value_{};
};

}  // namespace gorbex
