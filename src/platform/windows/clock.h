#pragma once

#include "platform/clock.h"

namespace gorbex {

class WindowsClock : public Clock {
 public:
  [[nodiscard]] CivilTime LocalNow() const override;
  [[nodiscard]] std::chrono::milliseconds Elapsed() const override;
};

}  // namespace gorbex
