#pragma once

namespace gorbex {

/// Lets this thread use components while it exists. Objects must be gone before it.
class ComApartment {
 public:
  ComApartment();
  ~ComApartment();
  ComApartment(const ComApartment&) = delete;
  ComApartment& operator=(const ComApartment&) = delete;

 private:
  bool entered_;
};

}  // namespace gorbex
