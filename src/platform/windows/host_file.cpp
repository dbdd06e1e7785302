#include "platform/windows/host_file.h"

#include <windows.h>

#include <algorithm>
#include <atomic>
#include <cstdint>
#include <string_view>
#include <system_error>
#include <utility>

#include "platform/windows/handle.h"

namespace gorbex {
namespace {

constexpr DWORD kShareAll = FILE_SHARE_READ | FILE_SHARE_WRITE | FILE_SHARE_DELETE;

[[noreturn]] void Raise(DWORD number) {
  throw std::system_error(static_cast<int>(number), std::system_category());
}

void Require(bool succeeded) {
  if (!succeeded) Raise(GetLastError());
}

Handle Open(const std::wstring& path, DWORD rights, DWORD disposition, DWORD flags = 0) {
  Handle file(CreateFileW(path.c_str(), rights, kShareAll, nullptr, disposition,
                          FILE_ATTRIBUTE_NORMAL | flags, nullptr));
  Require(static_cast<bool>(file));
  if (GetFileType(file.Get()) != FILE_TYPE_DISK) Raise(ERROR_INVALID_FUNCTION);
  return file;
}

DWORD WriteSome(const Handle& file, std::string_view bytes) {
  DWORD written = 0;
  const auto size = static_cast<DWORD>(bytes.size());
  Require(WriteFile(file.Get(), bytes.data(), size, &written, nullptr) != 0);
  if (written == 0) Raise(ERROR_WRITE_FAULT);
  return written;
}

void WriteAll(const Handle& file, std::string_view bytes) {
  constexpr std::size_t kMostAtOnce = std::size_t{64} << 20U;
  while (!bytes.empty()) bytes.remove_prefix(WriteSome(file, bytes.substr(0, kMostAtOnce)));
}

std::size_t ReadSome(const Handle& file, char* to, std::size_t size) {
  constexpr std::size_t kMostAtOnce = std::size_t{64} << 20U;
  DWORD count = 0;
  const auto most = static_cast<DWORD>(std::min(size, kMostAtOnce));
  Require(ReadFile(file.Get(), to, most, &count, nullptr) != 0);
  return count;
}

bool IsLink(const std::wstring& path) {
  const DWORD attributes = GetFileAttributesW(path.c_str());
  return attributes != INVALID_FILE_ATTRIBUTES && (attributes & FILE_ATTRIBUTE_REPARSE_POINT) != 0;
}

std::wstring RealTarget(const std::wstring& path) {
  if (!IsLink(path)) return path;
  const Handle file = Open(path, FILE_READ_ATTRIBUTES, OPEN_EXISTING);
  std::wstring target(32768, L'\0');
  const DWORD length = GetFinalPathNameByHandleW(
      file.Get(), target.data(), static_cast<DWORD>(target.size()), FILE_NAME_NORMALIZED);
  Require(length > 0 && length < target.size());
  target.resize(length);
  return target;
}

// A name beside the target that no other program and no other call uses.
std::wstring NameBeside(const std::wstring& target) {
  static std::atomic<unsigned> count{0};
  const auto folder = target.substr(0, target.find_last_of(L'\\') + 1);
  return folder + L".gorbex-" + std::to_wstring(GetCurrentProcessId()) + L"-" +
         std::to_wstring(++count);
}

// A file beside its target; gone again unless it took the target's place.
class TemporaryFile {
 public:
  explicit TemporaryFile(const std::wstring& target)
      : path_(NameBeside(target)), file_(Open(path_, GENERIC_WRITE, CREATE_NEW)) {}
  ~TemporaryFile() {
    file_.Close();
    if (!moved_) DeleteFileW(path_.c_str());
  }
  TemporaryFile(const TemporaryFile&) = delete;
  TemporaryFile& operator=(const TemporaryFile&) = delete;

  [[nodiscard]] const Handle& File() const { return file_; }

  void MoveTo(const std::wstring& target) {
    Require(FlushFileBuffers(file_.Get()) != 0);
    file_.Close();
    const DWORD old = GetFileAttributesW(target.c_str());
    if (old != INVALID_FILE_ATTRIBUTES) Require(SetFileAttributesW(path_.c_str(), old) != 0);
    Require(MoveFileExW(path_.c_str(), target.c_str(), MOVEFILE_REPLACE_EXISTING) != 0);
    moved_ = true;
  }

 private:
  std::wstring path_;
  Handle file_;
  bool moved_ = false;
};

}  // namespace

std::string ReadHostFile(const std::wstring& path) {
  const Handle file = Open(path, GENERIC_READ, OPEN_EXISTING, FILE_FLAG_SEQUENTIAL_SCAN);
  LARGE_INTEGER size{};
  Require(GetFileSizeEx(file.Get(), &size) != 0);
  if (static_cast<std::uint64_t>(size.QuadPart) > kLargestFile) Raise(ERROR_NOT_ENOUGH_MEMORY);

  // One byte more than the file holds, so that its end shows without growing the buffer.
  std::string bytes(static_cast<std::size_t>(size.QuadPart) + 1, '\0');
  std::size_t used = 0;
  while (const auto count = ReadSome(file, bytes.data() + used, bytes.size() - used)) {
    used += count;
    if (used > kLargestFile) Raise(ERROR_NOT_ENOUGH_MEMORY);
    if (used == bytes.size()) bytes.resize(std::max<std::size_t>(2 * used, 4096));
  }
  bytes.resize(used);
  return bytes;
}

void ReplaceHostFile(const std::wstring& path, const std::string& bytes) {
  const auto target = RealTarget(path);
  TemporaryFile file(target);
  WriteAll(file.File(), bytes);
  file.MoveTo(target);
}

void AppendHostFile(const std::wstring& path, const std::string& bytes) {
  const Handle file = Open(path, FILE_APPEND_DATA, OPEN_ALWAYS);
  WriteAll(file, bytes);
}

}  // namespace gorbex
