#include "platform/windows/clock.h"

#include <windows.h>

namespace gorbex {

CivilTime WindowsClock::LocalNow() const {
  SYSTEMTIME now{};
  GetLocalTime(&now);
  return {now.wYear, now.wMonth, now.wDay, now.wHour, now.wMinute, now.wSecond};
}

std::chrono::milliseconds WindowsClock::Elapsed() const {
  return std::chrono::milliseconds(GetTickCount64());
}

}  // namespace gorbex
