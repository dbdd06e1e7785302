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

extern "C" {

int __real_open(const char* path, int flags, ...);
int __real_mkostemp(char* pattern, int flags);
ssize_t __real_read(int file, void* to, std::size_t size);
ssize_t __real_write(int file, const void* from, std::size_t size);
int __real_linkat(int from, const char* old, int to, const char* path, int flags);
int __real_rename(const char* from, const char* to);
int __real_fchmod(int file, mode_t mode);
int __real_chmod(const char* path, mode_t mode);
int __real_unlink(const char* path);
int __real_mkdir(const char* path, mode_t mode);
int __real_flock(int file, int operation);

int __wrap_open(const char* path, int flags, ...) {
  std::va_list rest;
  va_start(rest, flags);
  const bool makes = (flags & O_CREAT) != 0 || (flags & O_TMPFILE) == O_TMPFILE;
  const mode_t mode = makes ? va_arg(rest, mode_t) : 0;
  va_end(rest);
  return IsCounted(path) && Strikes() ? -1 : __real_open(path, flags, mode);
}

int __wrap_mkostemp(char* pattern, int flags) {
  return Strikes() ? -1 : __real_mkostemp(pattern, flags);
}

ssize_t __wrap_read(int file, void* to, std::size_t size) {
  return Strikes() ? -1 : __real_read(file, to, size);
}

ssize_t __wrap_write(int file, const void* from, std::size_t size) {
  return Fails(FailingCalls::StrikesWrite(size)) ? -1 : __real_write(file, from, size);
}

// A test does not need its data on the disk at once; leaving this out saves time.
int __wrap_fdatasync(int /*file*/) {
  return Strikes() ? -1 : 0;
}

int __wrap_linkat(int from, const char* old, int to, const char* path, int flags) {
  return Strikes() ? -1 : __real_linkat(from, old, to, path, flags);
}

int __wrap_rename(const char* from, const char* to) {
  return Strikes() ? -1 : __real_rename(from, to);
}

int __wrap_fchmod(int file, mode_t mode) {
  return Strikes() ? -1 : __real_fchmod(file, mode);
}

int __wrap_chmod(const char* path, mode_t mode) {
  return Strikes() ? -1 : __real_chmod(path, mode);
}

int __wrap_unlink(const char* path) {
  return Strikes() ? -1 : __real_unlink(path);
}

int __wrap_mkdir(const char* path, mode_t mode) {
  return Strikes() ? -1 : __real_mkdir(path, mode);
}

int __wrap_flock(int file, int operation) {
  return Strikes() ? -1 : __real_flock(file, operation);
}

}  // extern "C"
