#pragma once

#include <windows.h>

#include <utility>

namespace gorbex {

/// Owns a reference to an object of the component system.
template <class Interface>
class ComPointer {
 public:
  ComPointer() = default;
  explicit ComPointer(Interface* owned) : object_(owned) {}
  ~ComPointer() {
    if (object_ != nullptr) object_->Release();
  }
  ComPointer(ComPointer&& other) noexcept : object_(std::exchange(other.object_, nullptr)) {}
  ComPointer& operator=(ComPointer&& other) noexcept {
    std::swap(object_, other.object_);
    return *this;
  }
  ComPointer(const ComPointer&) = delete;
  ComPointer& operator=(const ComPointer&) = delete;

  [[nodiscard]] Interface* Get() const { return object_; }
  Interface* operator->() const { return object_; }
  explicit operator bool() const { return object_ != nullptr; }

  /// The address where a call stores a new object. Only while there is none yet.
  Interface** Place() { return &object_; }

 private:
  Interface* object_ = nullptr;
};

}  // namespace gorbex
