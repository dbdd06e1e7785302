#pragma once

#include <windows.h>

#include "platform/clock.h"

namespace gorbex {

struct WindowsClock : Clock {
  [[nodiscard]] CivilTime LocalNow() const override {
    SYSTEMTIME now{};
    GetLocalTime(&now);
    return {now.wYear, now.wMonth, now.wDay, now.wHour, now.wMinute, now.wSecond};
  }
};

}  // namespace gorbex
