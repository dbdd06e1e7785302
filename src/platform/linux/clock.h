#pragma once

#include <ctime>

#include "platform/clock.h"

namespace gorbex {

struct LinuxClock : Clock {
  [[nodiscard]] CivilTime LocalNow() const override {
    const std::time_t now = std::time(nullptr);
    std::tm local{};
    tzset();  // the machine's time zone may have changed since
    localtime_r(&now, &local);
    return {local.tm_year + 1900, local.tm_mon + 1, local.tm_mday,
            local.tm_hour,        local.tm_min,     local.tm_sec};
  }
};

}  // namespace gorbex
