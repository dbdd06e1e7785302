#include "platform/linux/clock.h"

#include <ctime>

namespace gorbex {

CivilTime LinuxClock::LocalNow() const {
  const std::time_t now = std::time(nullptr);
  std::tm local{};
  tzset();  // the machine's time zone may have changed since
  localtime_r(&now, &local);
  return {local.tm_year + 1900, local.tm_mon + 1, local.tm_mday,
          local.tm_hour,        local.tm_min,     local.tm_sec};
}

std::chrono::milliseconds LinuxClock::Elapsed() const {
  return std::chrono::duration_cast<std::chrono::milliseconds>(
      std::chrono::steady_clock::now().time_since_epoch());
}

}  // namespace gorbex
