#include "platform/windows/build_lock.h"

#include "platform/windows/wide_text.h"

namespace gorbex {
namespace {

Handle LockFileIn(const std::string& folder) {
  const auto path = ToWide(folder) + L"\\gorbexbuilder.build.lock";
  return Handle(CreateFileW(path.c_str(), GENERIC_READ | GENERIC_WRITE,
                            FILE_SHARE_READ | FILE_SHARE_WRITE | FILE_SHARE_DELETE, nullptr,
                            OPEN_ALWAYS, FILE_ATTRIBUTE_NORMAL, nullptr));
}

bool Lock(const Handle& file, DWORD flags) {
  OVERLAPPED start{};
  return LockFileEx(file.Get(), LOCKFILE_EXCLUSIVE_LOCK | flags, 0, 1, 0, &start) != 0;
}

}  // namespace

BuildLock::BuildLock(const std::string& programFolder, const std::function<void()>& onWait)
    : file_(LockFileIn(programFolder)) {
  if (!file_ || Lock(file_, LOCKFILE_FAIL_IMMEDIATELY)) return;
  if (GetLastError() != ERROR_LOCK_VIOLATION && GetLastError() != ERROR_IO_PENDING) return;
  onWait();
  Lock(file_, 0);
}

}  // namespace gorbex
