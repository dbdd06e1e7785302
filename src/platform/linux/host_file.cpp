#include "platform/linux/host_file.h"
#include "platform/linux/system_error.h"

#include <fcntl.h>
#include <unistd.h>

#include <algorithm>
#include <cerrno>
#include <filesystem>
#include <string_view>
#include <system_error>
#include <utility>

namespace gorbex {
namespace {

namespace fs = std::filesystem;

struct stat PlainFileInfo(int descriptor) {
  struct stat info {};
  RequireSuccess(fstat(descriptor, &info) == 0);
  if (!S_ISREG(info.st_mode)) RaiseSystemError(ENODEV);
  return info;
}

// Takes away from the bytes what was written, also when the rest cannot be.
void WriteAll(int descriptor, std::string_view& bytes) {
  while (!bytes.empty()) {
    const auto written = write(descriptor, bytes.data(), bytes.size());
    if (written < 0 && errno == EINTR) continue;
    RequireSuccess(written >= 0);
    if (written == 0) RaiseSystemError(EIO);
    bytes.remove_prefix(static_cast<std::size_t>(written));
  }
}

std::size_t ReadSome(int descriptor, char* to, std::size_t size) {
  for (;;) {
    const auto count = read(descriptor, to, size);
    if (count >= 0) return static_cast<std::size_t>(count);
    RequireSuccess(errno == EINTR);
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
  RaiseSystemError(ELOOP);
}

std::optional<struct stat> OldFile(const std::string& path) {
  struct stat info {};
  if (lstat(path.c_str(), &info) != 0) {
    RequireSuccess(errno == ENOENT);
    return std::nullopt;
  }
  if (!S_ISREG(info.st_mode)) RaiseSystemError(ENODEV);
  RequireSuccess(faccessat(AT_FDCWD, path.c_str(), W_OK, AT_EACCESS) == 0);
  return info;
}

// A new file in the target's folder that is to take the target's place; until it has, its end
// removes it. Where the file system allows it, the file gets its name only when it is complete: a
// program that is killed before leaves no file.
class TemporaryFile {
 public:
  explicit TemporaryFile(const std::string& target)
      : folder_(fs::absolute(target).parent_path()), descriptor_(Nameless(folder_)) {
    if (descriptor_ >= 0) return;
    path_ = (folder_ / ".gorbex-XXXXXX").native();
    descriptor_ = mkostemp(path_.data(), O_CLOEXEC);
    isNamed_ = descriptor_ >= 0;
    RequireSuccess(isNamed_);
  }
  ~TemporaryFile() {
    if (descriptor_ >= 0) close(descriptor_);
    if (isNamed_) unlink(path_.c_str());
  }
  TemporaryFile(const TemporaryFile&) = delete;
  TemporaryFile& operator=(const TemporaryFile&) = delete;

  [[nodiscard]] int Number() const { return descriptor_; }

  void MoveTo(const std::string& target, Flush flush) {
    if (flush == Flush::Wait) RequireSuccess(fdatasync(descriptor_) == 0);
    if (!isNamed_) Name();
    const int closing = std::exchange(descriptor_, -1);
    RequireSuccess(close(closing) == 0);
    RequireSuccess(rename(path_.c_str(), target.c_str()) == 0);
    isNamed_ = false;
  }

 private:
  static std::string LinkTo(int descriptor) {
    return "/proc/self/fd/" + std::to_string(descriptor);
  }

  // Below 0 where there are none, or no way to give one a name later.
  static int Nameless(const fs::path& folder) {
    const int file = open(folder.c_str(), O_TMPFILE | O_WRONLY | O_CLOEXEC, 0600);
    static const bool canName = access(LinkTo(STDERR_FILENO).c_str(), F_OK) == 0;
    if (file < 0 || canName) return file;
    close(file);
    return -1;
  }

  // The number of this process may have been that of one that was killed in between.
  void Name() {
    constexpr int kMost = 100;
    for (int i = 0; !isNamed_; ++i) {
      path_ =
          (folder_ / (".gorbex-" + std::to_string(getpid()) + "-" + std::to_string(i))).native();
      isNamed_ = linkat(AT_FDCWD, LinkTo(descriptor_).c_str(), AT_FDCWD, path_.c_str(),
                        AT_SYMLINK_FOLLOW) == 0;
      RequireSuccess(isNamed_ || (errno == EEXIST && i < kMost));
    }
  }

  fs::path folder_;
  std::string path_;
  int descriptor_;
  bool isNamed_ = false;
};

// Removes what was added last, unless another program has added to it meanwhile.
void TakeBack(int descriptor, std::size_t count) {
  const auto end = lseek(descriptor, 0, SEEK_CUR);
  struct stat info {};
  if (count == 0 || fstat(descriptor, &info) != 0 || info.st_size != end) return;
  static_cast<void>(ftruncate(descriptor, end - static_cast<off_t>(count)) == 0);
}

void AddAtEnd(const Descriptor& file, const std::string& bytes) {
  std::string_view rest = bytes;
  try {
    WriteAll(file.Number(), rest);
  } catch (const std::system_error&) {
    TakeBack(file.Number(), bytes.size() - rest.size());
    throw;
  }
}

constexpr int kAppending = O_WRONLY | O_APPEND | O_CLOEXEC | O_NONBLOCK | O_NOCTTY;

}  // namespace

Descriptor::~Descriptor() {
  if (number_ >= 0) close(number_);
}

std::string ReadHostFile(const std::string& path) {
  auto bytes = ReadHostFileIfThere(path);
  if (!bytes) RaiseSystemError(ENOENT);
  return std::move(*bytes);
}

std::optional<std::string> ReadHostFileIfThere(const std::string& path) {
  const Descriptor file(open(path.c_str(), O_RDONLY | O_CLOEXEC | O_NONBLOCK | O_NOCTTY));
  if (file.Number() < 0 && (errno == ENOENT || errno == ENOTDIR)) return std::nullopt;
  RequireSuccess(file.Number() >= 0);
  const auto size = static_cast<std::size_t>(PlainFileInfo(file.Number()).st_size);
  if (size > kLargestFile) RaiseSystemError(ENOMEM);

  // One byte more than the file holds, so that its end shows without growing the buffer.
  std::string bytes(size + 1, '\0');
  std::size_t used = 0;
  while (const auto count = ReadSome(file.Number(), bytes.data() + used, bytes.size() - used)) {
    used += count;
    if (used > kLargestFile) RaiseSystemError(ENOMEM);
    if (used == size) break;
    if (used == bytes.size()) bytes.resize(std::max<std::size_t>(2 * used, 4096));
  }
  bytes.resize(used);
  return bytes;
}

void ReplaceHostFile(const std::string& path, const std::string& bytes, mode_t newFileMode,
                     Flush flush) {
  const auto target = RealTarget(path);
  const auto old = OldFile(target);
  TemporaryFile file(target);
  std::string_view rest = bytes;
  WriteAll(file.Number(), rest);
  // Only root can hand the file to its old owner, and nobody else needs to.
  if (old) static_cast<void>(fchown(file.Number(), old->st_uid, old->st_gid) == 0);
  RequireSuccess(fchmod(file.Number(), old ? old->st_mode & 07777U : newFileMode) == 0);
  file.MoveTo(target, flush);
}

void AppendHostFile(const std::string& path, const std::string& bytes) {
  const Descriptor file(open(path.c_str(), kAppending | O_CREAT, 0666));
  RequireSuccess(file.Number() >= 0);
  static_cast<void>(PlainFileInfo(file.Number()));
  AddAtEnd(file, bytes);
}

bool AppendToHostFile(const std::string& path, const std::string& bytes) {
  const Descriptor file(open(path.c_str(), kAppending));
  if (file.Number() < 0) return false;
  if ((PlainFileInfo(file.Number()).st_mode & S_IWUSR) == 0) return false;
  AddAtEnd(file, bytes);
  return true;
}

}  // namespace gorbex
