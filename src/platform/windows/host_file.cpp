#include "platform/windows/host_file.h"

#include <windows.h>

#include <algorithm>
#include <atomic>
#include <cstdint>
#include <string_view>
#include <system_error>
#include <vector>

#include "platform/windows/handle.h"
#include "platform/windows/system_error.h"

namespace gorbex {
namespace {

constexpr DWORD kShareAll = FILE_SHARE_READ | FILE_SHARE_WRITE | FILE_SHARE_DELETE;

Handle Open(const std::wstring& path, DWORD rights, DWORD disposition, DWORD flags = 0) {
  Handle file(CreateFileW(path.c_str(), rights, kShareAll, nullptr, disposition,
                          FILE_ATTRIBUTE_NORMAL | flags, nullptr));
  RequireSuccess(static_cast<bool>(file));
  if (GetFileType(file.Get()) != FILE_TYPE_DISK) RaiseSystemError(ERROR_INVALID_FUNCTION);
  return file;
}

DWORD WriteSome(const Handle& file, std::string_view bytes) {
  DWORD written = 0;
  const auto size = static_cast<DWORD>(bytes.size());
  RequireSuccess(WriteFile(file.Get(), bytes.data(), size, &written, nullptr) != 0);
  if (written == 0) RaiseSystemError(ERROR_WRITE_FAULT);
  return written;
}

// Leaves in `rest` what was not written.
void WriteRest(const Handle& file, std::string_view& rest) {
  constexpr std::size_t kMostAtOnce = std::size_t{64} << 20U;
  while (!rest.empty()) rest.remove_prefix(WriteSome(file, rest.substr(0, kMostAtOnce)));
}

void WriteAll(const Handle& file, std::string_view bytes) {
  WriteRest(file, bytes);
}

std::size_t ReadSome(const Handle& file, char* to, std::size_t size) {
  constexpr std::size_t kMostAtOnce = std::size_t{64} << 20U;
  DWORD count = 0;
  const auto most = static_cast<DWORD>(std::min(size, kMostAtOnce));
  RequireSuccess(ReadFile(file.Get(), to, most, &count, nullptr) != 0);
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
  RequireSuccess(length > 0 && length < target.size());
  target.resize(length);
  return target;
}

std::wstring FolderOf(const std::wstring& target) {
  return target.substr(0, target.find_last_of(L'\\') + 1);
}

// A name that no other call of this program uses.
std::wstring NewName() {
  static std::atomic<unsigned> count{0};
  return L".gorbex-" + std::to_wstring(GetCurrentProcessId()) + L"-" + std::to_wstring(++count);
}

bool IsThere(const std::wstring& path) {
  return GetFileAttributesW(path.c_str()) != INVALID_FILE_ATTRIBUTES;
}

void CopySecurity(const std::wstring& from, const std::wstring& to, SECURITY_INFORMATION part) {
  DWORD size = 0;
  GetFileSecurityW(from.c_str(), part, nullptr, 0, &size);
  std::vector<std::byte> security(size);
  if (size == 0 || !GetFileSecurityW(from.c_str(), part, security.data(), size, &size)) return;
  SetFileSecurityW(to.c_str(), part, security.data());
}

// Sets the system's last error when it cannot. Asked before a replacement, because one that fails
// can leave an extra file.
bool CanBeReplaced(const std::wstring& target) {
  return static_cast<bool>(Handle(CreateFileW(target.c_str(), GENERIC_READ | DELETE, kShareAll,
                                              nullptr, OPEN_EXISTING, 0, nullptr)));
}

// Whether a file has nothing that a new one could not be given: no streams beside its text, and no
// form on the disk that was chosen for it.
bool HasOnlyText(const std::wstring& path) {
  constexpr DWORD kForms =
      FILE_ATTRIBUTE_ENCRYPTED | FILE_ATTRIBUTE_COMPRESSED | FILE_ATTRIBUTE_SPARSE_FILE;
  if ((GetFileAttributesW(path.c_str()) & kForms) != 0) return false;
  WIN32_FIND_STREAM_DATA stream{};
  const HANDLE search = FindFirstStreamW(path.c_str(), FindStreamInfoStandard, &stream, 0);
  if (search == INVALID_HANDLE_VALUE) return true;
  const bool isOnlyOne = FindNextStreamW(search, &stream) == 0;
  FindClose(search);
  return isOnlyOne;
}

// A file beside its target; gone again unless it took the target's place.
class TemporaryFile {
 public:
  explicit TemporaryFile(const std::wstring& target) : file_(Make(FolderOf(target))) {}
  ~TemporaryFile() {
    file_.Close();
    if (!moved_) DeleteFileW(path_.c_str());
  }
  TemporaryFile(const TemporaryFile&) = delete;
  TemporaryFile& operator=(const TemporaryFile&) = delete;

  /// Gives the file the target's rights before it has a text: not every system does so when a file
  /// takes the target's place, and nobody else may read the text meanwhile. The owner is set only
  /// if the system allows that.
  void TakeRightsOf(const std::wstring& target) const {
    CopySecurity(target, path_, DACL_SECURITY_INFORMATION);
    CopySecurity(target, path_, OWNER_SECURITY_INFORMATION);
  }

  void Fill(std::string_view bytes) {
    WriteAll(file_, bytes);
    RequireSuccess(FlushFileBuffers(file_.Get()) != 0);
    file_.Close();
  }

  /// For a target that is not there yet.
  void MoveTo(const std::wstring& target) {
    RequireSuccess(MoveFileExW(path_.c_str(), target.c_str(), MOVEFILE_REPLACE_EXISTING) != 0);
    moved_ = true;
  }

  /// Takes over the target's attributes and streams with its place. False when the
  /// target stays, because other programs hold it or the system refuses for other reasons.
  bool Replace(const std::wstring& target) {
    constexpr ULONGLONG kPatience = 1000;
    constexpr DWORD kPause = 20;
    RequireSuccess(SetFileAttributesW(path_.c_str(), GetFileAttributesW(target.c_str())) != 0);
    const ULONGLONG start = GetTickCount64();
    while (!CanBeReplaced(target) || !(MovesOver(target) || Replaces(target))) {
      const DWORD error = GetLastError();
      // The system can fail when the old file is gone already.
      if (!IsThere(target)) {
        MoveTo(target);
        return true;
      }
      if (!IsHeld(error) || GetTickCount64() - start > kPatience) return false;
      Sleep(kPause);
    }
    moved_ = true;
    return true;
  }

 private:
  static bool IsHeld(DWORD error) {
    return error == ERROR_SHARING_VIOLATION || error == ERROR_LOCK_VIOLATION ||
           error == ERROR_ACCESS_DENIED || error == ERROR_USER_MAPPED_FILE ||
           error == ERROR_UNABLE_TO_REMOVE_REPLACED;
  }

  // In one step: a program that is killed leaves the old file or the new one.
  [[nodiscard]] bool MovesOver(const std::wstring& target) const {
    return HasOnlyText(target) &&
           MoveFileExW(path_.c_str(), target.c_str(), MOVEFILE_REPLACE_EXISTING) != 0;
  }

  // In several steps, between which neither file has the name. Keeps more of the old file, and can
  // replace one that other programs have open.
  [[nodiscard]] bool Replaces(const std::wstring& target) const {
    return ReplaceFileW(target.c_str(), path_.c_str(), nullptr, 0, nullptr, nullptr) != 0;
  }

  // A program that was killed may have had our number, and left a name behind.
  Handle Make(const std::wstring& folder) {
    constexpr int kMost = 100;
    for (int i = 0;; ++i) {
      path_ = folder + NewName();
      try {
        return Open(path_, GENERIC_WRITE, CREATE_NEW);
      } catch (const std::system_error& error) {
        if (error.code().value() != ERROR_FILE_EXISTS || i == kMost) throw;
      }
    }
  }

  std::wstring path_;
  Handle file_;
  bool moved_ = false;
};

void MoveInFile(const Handle& file, std::size_t place) {
  LARGE_INTEGER offset{};
  offset.QuadPart = static_cast<LONGLONG>(place);
  RequireSuccess(SetFilePointerEx(file.Get(), offset, nullptr, FILE_BEGIN) != 0);
}

void SetSize(const Handle& file, std::size_t size) {
  MoveInFile(file, size);
  RequireSuccess(SetEndOfFile(file.Get()) != 0);
}

// A file that grows gets its room first, so that a full disk changes nothing.
void Fill(const Handle& file, std::string_view bytes, std::size_t oldSize) {
  if (bytes.size() > oldSize) SetSize(file, bytes.size());
  MoveInFile(file, 0);
  WriteAll(file, bytes);
  SetSize(file, bytes.size());
  RequireSuccess(FlushFileBuffers(file.Get()) != 0);
}

std::uint64_t SizeOf(const Handle& file) {
  LARGE_INTEGER size{};
  RequireSuccess(GetFileSizeEx(file.Get(), &size) != 0);
  return static_cast<std::uint64_t>(size.QuadPart);
}

std::string ReadAll(const Handle& file) {
  const auto size = SizeOf(file);
  if (size > kLargestFile) RaiseSystemError(ERROR_NOT_ENOUGH_MEMORY);

  // One byte more than the file holds, so that its end shows without growing the buffer.
  std::string bytes(static_cast<std::size_t>(size) + 1, '\0');
  std::size_t used = 0;
  while (const auto count = ReadSome(file, bytes.data() + used, bytes.size() - used)) {
    used += count;
    if (used > kLargestFile) RaiseSystemError(ERROR_NOT_ENOUGH_MEMORY);
    if (used == bytes.size()) bytes.resize(std::max<std::size_t>(2 * used, 4096));
  }
  bytes.resize(used);
  return bytes;
}

void Overwrite(const Handle& file, std::string_view bytes) {
  const auto old = ReadAll(file);
  try {
    Fill(file, bytes, old.size());
  } catch (const std::system_error&) {
    try {
      Fill(file, old, old.size());
    } catch (const std::system_error&) {
      // The first failure is the one to report.
    }
    throw;
  }
}

// Removes what was added last, unless another program has added to it meanwhile. The caller has a
// failure to report already.
void TakeBack(const std::wstring& path, std::uint64_t before, std::size_t added) {
  if (added == 0) return;
  try {
    const Handle file = Open(path, GENERIC_WRITE, OPEN_EXISTING);
    if (SizeOf(file) == before + added) SetSize(file, static_cast<std::size_t>(before));
  } catch (const std::system_error&) {
    return;
  }
}

DWORD NamesOf(const Handle& file) {
  BY_HANDLE_FILE_INFORMATION info{};
  RequireSuccess(GetFileInformationByHandle(file.Get(), &info) != 0);
  return info.nNumberOfLinks;
}

bool HasOneName(const std::wstring& target) {
  return NamesOf(Open(target, FILE_READ_ATTRIBUTES, OPEN_EXISTING)) == 1;
}

}  // namespace

std::string ReadHostFile(const std::wstring& path) {
  return ReadAll(Open(path, GENERIC_READ, OPEN_EXISTING, FILE_FLAG_SEQUENTIAL_SCAN));
}

void ReplaceHostFile(const std::wstring& path, const std::string& bytes) {
  const auto target = RealTarget(path);
  TemporaryFile file(target);
  const bool isNew = !IsThere(target);
  if (!isNew) file.TakeRightsOf(target);
  file.Fill(bytes);
  if (isNew) return file.MoveTo(target);
  if (HasOneName(target) && file.Replace(target)) return;
  Overwrite(Open(target, GENERIC_READ | GENERIC_WRITE, OPEN_EXISTING), bytes);
}

void AppendHostFile(const std::wstring& path, const std::string& bytes) {
  const Handle file = Open(path, FILE_APPEND_DATA, OPEN_ALWAYS);
  const auto before = SizeOf(file);
  std::string_view rest = bytes;
  try {
    WriteRest(file, rest);
  } catch (const std::system_error&) {
    TakeBack(path, before, bytes.size() - rest.size());
    throw;
  }
}

}  // namespace gorbex
