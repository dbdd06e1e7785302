#include "platform/windows/build_lock.h"

#include <chrono>

#include "platform/windows/end_signal.h"
#include "platform/windows/wide_text.h"

namespace gorbex {
namespace {

Handle LockFileIn(const std::string& folder) {
  const auto path = ToWide(folder) + L"\\gorbexbuilder.build.lock";
  return Handle(CreateFileW(path.c_str(), GENERIC_READ | GENERIC_WRITE,
                            FILE_SHARE_READ | FILE_SHARE_WRITE | FILE_SHARE_DELETE, nullptr,
                            OPEN_ALWAYS, FILE_ATTRIBUTE_NORMAL, nullptr));
}

bool Lock(const Handle& file) {
  OVERLAPPED start{};
  return LockFileEx(file.Get(), LOCKFILE_EXCLUSIVE_LOCK | LOCKFILE_FAIL_IMMEDIATELY, 0, 1, 0,
                    &start) != 0;
}

bool IsTaken() {
  return GetLastError() == ERROR_LOCK_VIOLATION || GetLastError() == ERROR_IO_PENDING;
}

}  // namespace

BuildLock::BuildLock(const std::string& programFolder, const std::function<void()>& onWait)
    : file_(LockFileIn(programFolder)) {
  if (!file_ || Lock(file_) || !IsTaken()) return;
  onWait();
  while (!EndSignal::Wanted() && !Lock(file_) && IsTaken()) {
    EndSignal::Wait(std::chrono::milliseconds(100));
  }
}

}  // namespace gorbex
