#pragma once

#include <windows.h>

#include <objbase.h>

namespace gorbex {

/// Lets this thread use components while it exists. Objects must be gone before it.
class ComApartment {
 public:
  ComApartment() : entered_(SUCCEEDED(CoInitializeEx(nullptr, COINIT_APARTMENTTHREADED))) {}
  ~ComApartment() {
    if (entered_) CoUninitialize();
  }
  ComApartment(const ComApartment&) = delete;
  ComApartment& operator=(const ComApartment&) = delete;

 private:
  bool entered_;
};

}  // namespace gorbex
