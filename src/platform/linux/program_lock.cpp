#include "platform/linux/program_lock.h"

#include <fcntl.h>
#include <sys/file.h>
#include <sys/stat.h>

#include <cerrno>
#include <chrono>

#include "platform/linux/end_signal.h"

namespace gorbex {
namespace {

// A user who may only read can hold the lock as well.
constexpr int kFlags = O_RDONLY | O_CREAT | O_CLOEXEC | O_NONBLOCK | O_NOCTTY;
constexpr mode_t kForAllToRead = 0644;

// A mask of whoever makes it must not hide from other users of the prefix that it is held.
int Opened(const std::filesystem::path& file) {
  const int made = open(file.c_str(), kFlags | O_EXCL, kForAllToRead);
  if (made < 0) return open(file.c_str(), kFlags, kForAllToRead);
  static_cast<void>(fchmod(made, kForAllToRead) == 0);
  return made;
}

}  // namespace

std::filesystem::path ProgramLock::ToBuild(const std::filesystem::path& prefixRoot) {
  return prefixRoot / "gorbexbuilder.build.lock";
}

std::filesystem::path ProgramLock::ToChange(const std::filesystem::path& prefixRoot) {
  return prefixRoot / "gorbexbuilder.change.lock";
}

ProgramLock::ProgramLock(const std::filesystem::path& file, const std::function<void()>& onWait)
    : ProgramLock(Opened(file)) {
  if (Take() == State::Free) return;
  onWait();
  while (!EndSignal::Wanted() && Take() == State::Taken) {
    EndSignal::Wait(std::chrono::milliseconds(100));
  }
}

std::shared_ptr<ProgramLock> ProgramLock::Try(const std::filesystem::path& file) {
  std::shared_ptr<ProgramLock> lock(new ProgramLock(Opened(file)));
  return lock->Take() == State::Free ? lock : nullptr;
}

std::shared_ptr<ProgramLock> ProgramLock::TryProduct(const std::filesystem::path& folder) {
  constexpr int kFolder = O_RDONLY | O_DIRECTORY | O_CLOEXEC;
  std::shared_ptr<ProgramLock> lock(new ProgramLock(open(folder.c_str(), kFolder)));
  return lock->Take() == State::Free ? lock : nullptr;
}

// Where no lock can be made, no other program can have made one.
ProgramLock::State ProgramLock::Take() const {
  if (file_.Number() < 0 || flock(file_.Number(), LOCK_EX | LOCK_NB) == 0) return State::Free;
  return errno == EWOULDBLOCK || errno == EINTR ? State::Taken : State::Free;
}

}  // namespace gorbex
