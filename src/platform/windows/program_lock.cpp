#include "platform/windows/program_lock.h"

#include <algorithm>
#include <chrono>
#include <utility>

#include "platform/code_page.h"
#include "platform/windows/end_signal.h"
#include "platform/windows/wide_text.h"

namespace gorbex {
namespace {

// A user who may only read can hold the lock as well.
Handle LockFile(const std::string& path) {
  return Handle(CreateFileW(ToWide(path).c_str(), GENERIC_READ,
                            FILE_SHARE_READ | FILE_SHARE_WRITE | FILE_SHARE_DELETE, nullptr,
                            OPEN_ALWAYS, FILE_ATTRIBUTE_NORMAL, nullptr));
}

bool Lock(const Handle& file) {
  OVERLAPPED start{};
  return LockFileEx(file.Get(), LOCKFILE_EXCLUSIVE_LOCK | LOCKFILE_FAIL_IMMEDIATELY, 0, 1, 0,
                    &start) != 0;
}

}  // namespace

std::string ProgramLock::ToBuild(const std::string& programFolder) {
  return programFolder + "\\gorbexbuilder.build.lock";
}

std::string ProgramLock::ToChange(const std::string& programFolder) {
  return programFolder + "\\gorbexbuilder.change.lock";
}

ProgramLock::ProgramLock(const std::string& file) : file_(LockFile(file)) {}

ProgramLock::ProgramLock(const std::string& file, const std::function<void()>& onWait)
    : ProgramLock(file) {
  if (Take() == State::Free) return;
  onWait();
  while (!EndSignal::Wanted() && Take() == State::Taken) {
    EndSignal::Wait(std::chrono::milliseconds(100));
  }
}

std::shared_ptr<ProgramLock> ProgramLock::Try(const std::string& file) {
  std::shared_ptr<ProgramLock> lock(new ProgramLock(file));
  return lock->Take() == State::Free ? lock : nullptr;
}

// The name is there as long as somebody has it. One that another user has cannot be opened.
std::shared_ptr<Handle> ProgramLock::TryProduct(const std::string& folder) {
  std::string name = LowerCase(folder);
  std::replace(name.begin(), name.end(), '\\', '/');
  Handle held(CreateMutexW(nullptr, FALSE, (L"Global\\GorbexBuilder " + ToWide(name)).c_str()));
  const DWORD error = GetLastError();
  const bool isTaken = error == ERROR_ALREADY_EXISTS || error == ERROR_ACCESS_DENIED;
  return isTaken ? nullptr : std::make_shared<Handle>(std::move(held));
}

// Where no lock can be made, no other program can have made one.
ProgramLock::State ProgramLock::Take() const {
  if (!file_ || Lock(file_)) return State::Free;
  const DWORD error = GetLastError();
  return error == ERROR_LOCK_VIOLATION || error == ERROR_IO_PENDING ? State::Taken : State::Free;
}

}  // namespace gorbex
