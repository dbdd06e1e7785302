#include <fcntl.h>
#include <sys/types.h>

#include <cerrno>
#include <cstdarg>
#include <cstddef>
#include <string_view>

#include "tests/faults/failing_calls.h"

namespace {

using gorbex::test::FailingCalls;
using gorbex::test::Fault;

// The file systems of the host that hold no files of a user, unless it is a disk in memory.
bool IsCounted(const char* path) {
  const std::string_view text(path);
  const bool isSystems = text.starts_with("/proc") || text.starts_with("/dev");
  return !isSystems || text.starts_with("/dev/shm");
}

bool Fails(const Fault* fault) {
  if (fault != nullptr) errno = fault->error;
  return fault != nullptr;
}

bool Strikes() {
  return Fails(FailingCalls::Strikes());
}

}  // namespace

// The linker leads a call to `__wrap_` and lets `__real_` be the system's own.
#define REAL(call, parameters) __real_##call parameters
#define WRAP(result, call, parameters, arguments)  \
  result REAL(call, parameters);                   \
  result __wrap_##call parameters {                \
    return Strikes() ? -1 : REAL(call, arguments); \
  }

extern "C" {

WRAP(int, mkostemp, (char* pattern, int flags), (pattern, flags))
WRAP(ssize_t, read, (int file, void* to, std::size_t size), (file, to, size))
WRAP(int, linkat, (int from, const char* old, int to, const char* path, int flags),
     (from, old, to, path, flags))
WRAP(int, rename, (const char* from, const char* to), (from, to))
WRAP(int, fchmod, (int file, mode_t mode), (file, mode))
WRAP(int, chmod, (const char* path, mode_t mode), (path, mode))
WRAP(int, unlink, (const char* path), (path))
WRAP(int, mkdir, (const char* path, mode_t mode), (path, mode))
WRAP(int, flock, (int file, int operation), (file, operation))

int __real_open(const char* path, int flags, ...);
int __wrap_open(const char* path, int flags, ...) {
  std::va_list rest;
  va_start(rest, flags);
  const bool makes = (flags & O_CREAT) != 0 || (flags & O_TMPFILE) == O_TMPFILE;
  const mode_t mode = makes ? va_arg(rest, mode_t) : 0;
  va_end(rest);
  return IsCounted(path) && Strikes() ? -1 : __real_open(path, flags, mode);
}

ssize_t __real_write(int file, const void* from, std::size_t size);
ssize_t __wrap_write(int file, const void* from, std::size_t size) {
  return Fails(FailingCalls::StrikesWrite(size)) ? -1 : __real_write(file, from, size);
}

// A test does not need its data on the disk at once; leaving this out saves time.
int __wrap_fdatasync(int /*file*/) {
  return Strikes() ? -1 : 0;
}

}  // extern "C"
