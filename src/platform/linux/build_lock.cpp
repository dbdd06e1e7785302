#include "platform/linux/build_lock.h"

#include <fcntl.h>
#include <sys/file.h>

#include <cerrno>
#include <chrono>

#include "platform/linux/end_signal.h"

namespace gorbex {
namespace {

// Who may only read can hold the lock as well.
constexpr int kFlags = O_RDONLY | O_CREAT | O_CLOEXEC | O_NONBLOCK | O_NOCTTY;

}  // namespace

BuildLock::BuildLock(const std::filesystem::path& prefixRoot, const std::function<void()>& onWait)
    : file_(open((prefixRoot / "gorbexbuilder.build.lock").c_str(), kFlags, 0666)) {
  if (file_.Number() < 0 || flock(file_.Number(), LOCK_EX | LOCK_NB) == 0) return;
  if (errno != EWOULDBLOCK) return;
  onWait();
  while (!EndSignal::Wanted() && flock(file_.Number(), LOCK_EX | LOCK_NB) != 0) {
    if (errno != EWOULDBLOCK && errno != EINTR) return;
    EndSignal::Wait(std::chrono::milliseconds(100));
  }
}

}  // namespace gorbex
