#pragma once

#include <windows.h>

#include <utility>

namespace gorbex {

/// Owns a handle of the system; both of its values for "none" count as none.
class Handle {
 public:
  explicit Handle(HANDLE handle = nullptr)
      : handle_(handle == INVALID_HANDLE_VALUE ? nullptr : handle) {}
  ~Handle() { Close(); }
  Handle(Handle&& other) noexcept : handle_(std::exchange(other.handle_, nullptr)) {}
  Handle& operator=(Handle&& other) noexcept {
    std::swap(handle_, other.handle_);
    return *this;
  }
  Handle(const Handle&) = delete;
  Handle& operator=(const Handle&) = delete;

  [[nodiscard]] HANDLE Get() const { return handle_; }
  explicit operator bool() const { return handle_ != nullptr; }

  void Close() {
    if (handle_ != nullptr) CloseHandle(std::exchange(handle_, nullptr));
  }

 private:
  HANDLE handle_;
};

}  // namespace gorbex
