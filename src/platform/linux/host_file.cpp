#include "platform/linux/host_file.h"

#include <fcntl.h>
#include <unistd.h>

#include <algorithm>
#include <cerrno>
#include <filesystem>
#include <optional>
#include <string_view>
#include <system_error>
#include <utility>

namespace gorbex {
namespace {

namespace fs = std::filesystem;

[[noreturn]] void Raise(int number) {
  throw std::system_error(number, std::generic_category());
}

void Require(bool succeeded) {
  if (!succeeded) Raise(errno);
}

struct stat PlainFileInfo(int descriptor) {
  struct stat info {};
  Require(fstat(descriptor, &info) == 0);
  if (!S_ISREG(info.st_mode)) Raise(ENODEV);
  return info;
}

void WriteAll(int descriptor, std::string_view bytes) {
  while (!bytes.empty()) {
    const auto written = write(descriptor, bytes.data(), bytes.size());
    if (written < 0 && errno == EINTR) continue;
    Require(written >= 0);
    if (written == 0) Raise(EIO);
    bytes.remove_prefix(static_cast<std::size_t>(written));
  }
}

std::size_t ReadSome(int descriptor, char* to, std::size_t size) {
  for (;;) {
    const auto count = read(descriptor, to, size);
    if (count >= 0) return static_cast<std::size_t>(count);
    Require(errno == EINTR);
  }
}

// Follows links by hand, because the last one may lead to a file that is not there yet.
std::string RealTarget(std::string path) {
  constexpr int kMostLinks = 40;
  for (int i = 0; i < kMostLinks; ++i) {
    struct stat info {};
    if (lstat(path.c_str(), &info) != 0 || !S_ISLNK(info.st_mode)) return path;
    path = (fs::path(path).parent_path() / fs::read_symlink(path)).native();
  }
  Raise(ELOOP);
}

std::optional<struct stat> OldFile(const std::string& path) {
  struct stat info {};
  if (stat(path.c_str(), &info) != 0) {
    Require(errno == ENOENT);
    return std::nullopt;
  }
  if (!S_ISREG(info.st_mode)) Raise(ENODEV);
  Require(faccessat(AT_FDCWD, path.c_str(), W_OK, AT_EACCESS) == 0);
  return info;
}

// A private file beside its target; gone again unless it took the target's place.
class TemporaryFile {
 public:
  explicit TemporaryFile(const std::string& target)
      : path_((fs::path(target).parent_path() / ".gorbex-XXXXXX").native()),
        descriptor_(mkostemp(path_.data(), O_CLOEXEC)) {
    Require(descriptor_ >= 0);
  }
  ~TemporaryFile() {
    if (descriptor_ >= 0) close(descriptor_);
    if (!moved_) unlink(path_.c_str());
  }
  TemporaryFile(const TemporaryFile&) = delete;
  TemporaryFile& operator=(const TemporaryFile&) = delete;

  [[nodiscard]] int Number() const { return descriptor_; }

  void MoveTo(const std::string& target) {
    Require(fdatasync(descriptor_) == 0);
    const int closing = std::exchange(descriptor_, -1);
    Require(close(closing) == 0);
    Require(rename(path_.c_str(), target.c_str()) == 0);
    moved_ = true;
  }

 private:
  std::string path_;
  int descriptor_;
  bool moved_ = false;
};

}  // namespace

Descriptor::~Descriptor() {
  if (number_ >= 0) close(number_);
}

std::string ReadHostFile(const std::string& path) {
  const Descriptor file(open(path.c_str(), O_RDONLY | O_CLOEXEC | O_NONBLOCK | O_NOCTTY));
  Require(file.Number() >= 0);
  const auto size = static_cast<std::size_t>(PlainFileInfo(file.Number()).st_size);
  if (size > kLargestFile) Raise(ENOMEM);

  // One byte more than the file holds, so that its end shows without growing the buffer.
  std::string bytes(size + 1, '\0');
  std::size_t used = 0;
  while (const auto count = ReadSome(file.Number(), bytes.data() + used, bytes.size() - used)) {
    used += count;
    if (used > kLargestFile) Raise(ENOMEM);
    if (used == bytes.size()) bytes.resize(std::max<std::size_t>(2 * used, 4096));
  }
  bytes.resize(used);
  return bytes;
}

void ReplaceHostFile(const std::string& path, const std::string& bytes, mode_t newFileMode) {
  const auto target = RealTarget(path);
  const auto old = OldFile(target);
  TemporaryFile file(target);
  WriteAll(file.Number(), bytes);
  // Only root can hand the file to its old owner, and nobody else needs to.
  if (old) static_cast<void>(fchown(file.Number(), old->st_uid, old->st_gid) == 0);
  Require(fchmod(file.Number(), old ? old->st_mode & 07777U : newFileMode) == 0);
  file.MoveTo(target);
}

void AppendHostFile(const std::string& path, const std::string& bytes) {
  constexpr int kFlags = O_WRONLY | O_APPEND | O_CREAT | O_CLOEXEC | O_NONBLOCK | O_NOCTTY;
  const Descriptor file(open(path.c_str(), kFlags, 0666));
  Require(file.Number() >= 0);
  static_cast<void>(PlainFileInfo(file.Number()));
  WriteAll(file.Number(), bytes);
}

}  // namespace gorbex
