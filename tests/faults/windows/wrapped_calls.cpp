#include <windows.h>

#include "fault_bench.h"

namespace gorbex::test {
namespace {

ULONGLONG slept = 0;

bool Fails(const Fault* fault) {
  if (fault != nullptr) SetLastError(static_cast<DWORD>(fault->error));
  return fault != nullptr;
}

template <class Result>
constexpr Result kFailed = 0;
template <>
constexpr DWORD kFailed<DWORD> = INVALID_FILE_ATTRIBUTES;

// What a program finds in the place of a call: it fails when its turn has come.
template <auto& Real, class Result, class... Arguments>
Result WINAPI Wrapped(Arguments... arguments) {
  if (Fails(FailingCalls::Strikes())) return kFailed<Result>;
  return Real(arguments...);
}

}  // namespace

}  // namespace gorbex::test

using gorbex::test::areFilesHeld;
using gorbex::test::FailingCalls;
using gorbex::test::Fails;
using gorbex::test::Fault;
using gorbex::test::slept;
using gorbex::test::Wrapped;

// A program reaches a call of the system through a pointer that is named after it; the linker gives
// it `__wrap_` instead and lets `__real_` be the system's own.
#define WRAP(call, instead)                         \
  extern "C" decltype(&(call)) __wrap___imp_##call; \
  decltype(&(call)) __wrap___imp_##call = (instead)
#define REAL(call) extern "C" decltype(&(call)) __real___imp_##call
#define WRAP_PLAINLY(call) \
  REAL(call);              \
  WRAP(call, (Wrapped<__real___imp_##call>))

WRAP_PLAINLY(CreateDirectoryW);
WRAP_PLAINLY(DeleteFileW);
WRAP_PLAINLY(GetFileAttributesExW);
WRAP_PLAINLY(GetFileAttributesW);
WRAP_PLAINLY(GetFileInformationByHandle);
WRAP_PLAINLY(GetFileSizeEx);
WRAP_PLAINLY(ReadFile);
WRAP_PLAINLY(SetEndOfFile);
WRAP_PLAINLY(SetFileAttributesW);
WRAP_PLAINLY(SetFilePointerEx);

REAL(CreateFileW);
REAL(FindFirstFileW);
REAL(GetTickCount64);
REAL(MoveFileExW);
REAL(ReplaceFileW);
REAL(WriteFile);

namespace {

HANDLE WINAPI Create(const wchar_t* path, DWORD rights, DWORD share, SECURITY_ATTRIBUTES* security,
                     DWORD disposition, DWORD flags, HANDLE like) {
  if (Fails(FailingCalls::Strikes())) return INVALID_HANDLE_VALUE;
  return __real___imp_CreateFileW(path, rights, share, security, disposition, flags, like);
}

HANDLE WINAPI FindFirst(const wchar_t* pattern, WIN32_FIND_DATAW* found) {
  if (Fails(FailingCalls::Strikes())) return INVALID_HANDLE_VALUE;
  return __real___imp_FindFirstFileW(pattern, found);
}

BOOL WINAPI Write(HANDLE file, const void* from, DWORD size, DWORD* written, OVERLAPPED* at) {
  if (Fails(FailingCalls::StrikesWrite(size))) return FALSE;
  return __real___imp_WriteFile(file, from, size, written, at);
}

// A test does not need its data on the disk at once; leaving this out saves time.
BOOL WINAPI Flush(HANDLE /*file*/) {
  return Fails(FailingCalls::Strikes()) ? FALSE : TRUE;
}

// Over a file that another program has open nothing is moved.
BOOL WINAPI Move(const wchar_t* file, const wchar_t* target, DWORD flags) {
  const bool isOpen = areFilesHeld || FailingCalls::Tries(Fault::Kind::LostFile);
  if (isOpen && __real___imp_GetFileAttributesW(target) != INVALID_FILE_ATTRIBUTES) {
    SetLastError(ERROR_ACCESS_DENIED);
    return FALSE;
  }
  if (Fails(FailingCalls::Strikes())) return FALSE;
  return __real___imp_MoveFileExW(file, target, flags);
}

BOOL WINAPI Replace(const wchar_t* target, const wchar_t* file, const wchar_t* backup, DWORD flags,
                    void* exclude, void* reserved) {
  if (areFilesHeld) {
    SetLastError(ERROR_SHARING_VIOLATION);
    return FALSE;
  }
  if (const Fault* fault = FailingCalls::Strikes(Fault::Kind::LostFile)) {
    DeleteFileW(target);
    return Fails(fault) ? FALSE : TRUE;
  }
  if (Fails(FailingCalls::Strikes())) return FALSE;
  return __real___imp_ReplaceFileW(target, file, backup, flags, exclude, reserved);
}

// Time passes while the program sleeps, but nobody waits for it.
void WINAPI Slept(DWORD milliseconds) {
  constexpr ULONGLONG kLazy = 100;
  slept += milliseconds * kLazy;
}

ULONGLONG WINAPI Ticks() {
  return __real___imp_GetTickCount64() + slept;
}

}  // namespace

WRAP(CreateFileW, &Create);
WRAP(FindFirstFileW, &FindFirst);
WRAP(FlushFileBuffers, &Flush);
WRAP(GetTickCount64, &Ticks);
WRAP(MoveFileExW, &Move);
WRAP(ReplaceFileW, &Replace);
WRAP(Sleep, &Slept);
WRAP(WriteFile, &Write);
