#include "platform/windows/child_process.h"

#include <algorithm>
#include <array>
#include <cwchar>
#include <limits>
#include <string_view>
#include <utility>

#include "platform/windows/full_path.h"
#include "platform/windows/system_error.h"
#include "platform/windows/wide_text.h"

namespace gorbex {
namespace {

Handle Nothing() {
  SECURITY_ATTRIBUTES inheritable{sizeof(SECURITY_ATTRIBUTES), nullptr, TRUE};
  return Handle(CreateFileW(L"NUL", GENERIC_READ | GENERIC_WRITE,
                            FILE_SHARE_READ | FILE_SHARE_WRITE, &inheritable, OPEN_EXISTING, 0,
                            nullptr));
}

bool IsConsole(HANDLE stream) {
  DWORD mode = 0;
  return GetConsoleMode(stream, &mode) != 0;
}

// A program with a window has no streams to hand down. Those of a console are not handles of the
// system before Windows 8: a child cannot be given them one by one.
Handle Inheritable(HANDLE stream) {
  HANDLE copy = nullptr;
  const HANDLE self = GetCurrentProcess();
  if (stream != nullptr && stream != INVALID_HANDLE_VALUE && !IsConsole(stream) &&
      DuplicateHandle(self, stream, self, &copy, 0, TRUE, DUPLICATE_SAME_ACCESS) != 0) {
    return Handle(copy);
  }
  return Nothing();
}

/// The attributes with which a child is created. It inherits only the handles of its standard
/// streams, and belongs to a job where there is one.
class ChildAttributes {
 public:
  ChildAttributes(const ChildStart& start, HANDLE job)
      : input_(Inheritable(start.input)),
        output_(Inheritable(start.output)),
        errorOutput_(Inheritable(start.errorOutput)),
        handles_{input_.Get(), output_.Get(), errorOutput_.Get()},
        job_(job) {
    constexpr DWORD kCount = 2;
    SIZE_T size = 0;
    InitializeProcThreadAttributeList(nullptr, kCount, 0, &size);
    memory_.resize(size);
    RequireSuccess(InitializeProcThreadAttributeList(List(), kCount, 0, &size) != 0);
    isMade_ = true;
    RequireSuccess(Set(PROC_THREAD_ATTRIBUTE_HANDLE_LIST, handles_.data(), sizeof(handles_)));
    // Systems before Windows 10 have no such attribute.
    constexpr DWORD_PTR kJobList = 0x0002000D;  // PROC_THREAD_ATTRIBUTE_JOB_LIST
    if (job != nullptr) static_cast<void>(Set(kJobList, &job_, sizeof(job_)));
  }
  ~ChildAttributes() {
    if (isMade_) DeleteProcThreadAttributeList(List());
  }
  ChildAttributes(const ChildAttributes&) = delete;
  ChildAttributes& operator=(const ChildAttributes&) = delete;

  [[nodiscard]] STARTUPINFOEXW StartupInfo() {
    STARTUPINFOEXW info{};
    info.StartupInfo.cb = sizeof(info);
    info.StartupInfo.dwFlags = STARTF_USESTDHANDLES;
    info.StartupInfo.hStdInput = input_.Get();
    info.StartupInfo.hStdOutput = output_.Get();
    info.StartupInfo.hStdError = errorOutput_.Get();
    info.lpAttributeList = List();
    return info;
  }

 private:
  LPPROC_THREAD_ATTRIBUTE_LIST List() {
    return reinterpret_cast<LPPROC_THREAD_ATTRIBUTE_LIST>(memory_.data());
  }
  bool Set(DWORD_PTR attribute, void* value, std::size_t size) {
    return UpdateProcThreadAttribute(List(), 0, attribute, value, size, nullptr, nullptr) != 0;
  }

  Handle input_;
  Handle output_;
  Handle errorOutput_;
  std::array<HANDLE, 3> handles_;
  HANDLE job_;
  std::vector<char> memory_;
  bool isMade_ = false;
};

// The child waits until it is told to begin, so that it starts nothing outside its job.
PROCESS_INFORMATION Spawn(const ChildStart& start, HANDLE job) {
  ChildAttributes attributes(start, job);
  auto info = attributes.StartupInfo();
  auto commandLine = start.commandLine;
  auto environment = start.environment;
  const DWORD ownConsole =
      start.hasOwnConsole || GetConsoleWindow() == nullptr ? CREATE_NO_WINDOW : 0;
  constexpr DWORD kFlags =
      EXTENDED_STARTUPINFO_PRESENT | CREATE_UNICODE_ENVIRONMENT | CREATE_SUSPENDED;
  PROCESS_INFORMATION made{};
  const BOOL isMade = CreateProcessW(
      start.program.c_str(), commandLine.data(), nullptr, nullptr, TRUE, kFlags | ownConsole,
      environment.empty() ? nullptr : environment.data(),
      start.folder.empty() ? nullptr : start.folder.c_str(), &info.StartupInfo, &made);
  // A job around this program may refuse jobs within it.
  if (isMade == 0 && job != nullptr) return Spawn(start, nullptr);
  RequireSuccess(isMade != 0);
  return made;
}

// Names ignore case, and the system wants them in that order.
struct NameOrder {
  bool operator()(const std::wstring& a, const std::wstring& b) const {
    return CompareStringOrdinal(a.c_str(), -1, b.c_str(), -1, TRUE) == CSTR_LESS_THAN;
  }
};
using Variables = std::map<std::wstring, std::wstring, NameOrder>;

Variables OwnVariables() {
  Variables variables;
  wchar_t* const block = GetEnvironmentStringsW();
  for (const wchar_t* entry = block; entry != nullptr && *entry != 0;
       entry += std::wcslen(entry) + 1) {
    const std::wstring_view text(entry);
    // The current folders of the drives are variables whose names begin with "=".
    const auto end = std::min(text.find(L'=', 1), text.size());
    variables[std::wstring(text.substr(0, end))] = text.substr(std::min(end + 1, text.size()));
  }
  FreeEnvironmentStringsW(block);
  return variables;
}

// The limit ends what is in the job with its last handle, which is ours.
void LimitToOurLife(const Handle& job, bool isLimited) {
  JOBOBJECT_EXTENDED_LIMIT_INFORMATION limits{};
  limits.BasicLimitInformation.LimitFlags = isLimited ? JOB_OBJECT_LIMIT_KILL_ON_JOB_CLOSE : 0;
  SetInformationJobObject(job.Get(), JobObjectExtendedLimitInformation, &limits, sizeof(limits));
}

bool IsIn(const Handle& job, const Handle& process) {
  BOOL isIn = FALSE;
  return IsProcessInJob(process.Get(), job.Get(), &isIn) != 0 && isIn != FALSE;
}

std::wstring WithoutQuotes(std::wstring folder) {
  std::erase(folder, L'"');
  return folder;
}

// A relative folder would mean another one where the child runs.
bool IsAbsolute(std::wstring_view folder) {
  return folder.starts_with(L"\\\\") ||
         (folder.size() > 2 && folder[1] == L':' && (folder[2] == L'\\' || folder[2] == L'/'));
}

}  // namespace

// The job is told to end with this program before there is a child, and the child starts inside it.
// So a program that is killed at any point here leaves no child that waits forever to be resumed.
ChildProcess::ChildProcess(const ChildStart& start) : job_(CreateJobObjectW(nullptr, nullptr)) {
  if (job_) LimitToOurLife(job_, true);
  const auto made = Spawn(start, job_.Get());
  process_ = Handle(made.hProcess);
  const Handle thread(made.hThread);
  if (job_ && !IsIn(job_, process_) && AssignProcessToJobObject(job_.Get(), process_.Get()) == 0) {
    job_.Close();
  }
  ResumeThread(thread.Get());
}

// A child goes on when its object is destroyed; this program's end no longer ends it.
ChildProcess::~ChildProcess() {
  if (job_) LimitToOurLife(job_, false);
}

void ChildProcess::OutliveProgram() {
  if (job_) LimitToOurLife(job_, false);
}

std::optional<std::uint32_t> ChildProcess::ExitCode(std::chrono::milliseconds patience) {
  constexpr std::chrono::milliseconds::rep kLongest = std::numeric_limits<int>::max();
  const auto wait = std::clamp<std::chrono::milliseconds::rep>(patience.count(), 0, kLongest);
  if (WaitForSingleObject(process_.Get(), static_cast<DWORD>(wait)) == WAIT_TIMEOUT) {
    return std::nullopt;
  }
  DWORD code = 255;
  GetExitCodeProcess(process_.Get(), &code);
  return code;
}

void ChildProcess::Terminate() {
  constexpr UINT kEndedByUs = 1;
  if (job_) TerminateJobObject(job_.Get(), kEndedByUs);
  TerminateProcess(process_.Get(), kEndedByUs);
}

std::vector<std::wstring> FoldersOfPath() {
  std::vector<std::wstring> folders;
  const auto path = EnvironmentVariable(L"PATH").value_or(L"");
  for (std::size_t begin = 0; begin < path.size();) {
    const auto end = std::min(path.find(L';', begin), path.size());
    auto folder = WithoutQuotes(path.substr(begin, end - begin));
    begin = end + 1;
    if (IsAbsolute(folder)) folders.push_back(std::move(folder));
  }
  return folders;
}

std::optional<std::wstring> FindInPath(const std::wstring& name) {
  for (const auto& folder : FoldersOfPath()) {
    for (const wchar_t* extension : {L"", L".exe"}) {
      auto path = folder;
      path.append(L"\\").append(name).append(extension);
      if (IsFile(path)) return path;
    }
  }
  return std::nullopt;
}

std::wstring EnvironmentWith(const std::map<std::string, std::optional<std::string>>& changes) {
  auto variables = OwnVariables();
  for (const auto& [name, value] : changes) {
    if (value) variables[WideFromUtf8(name)] = WideFromUtf8(*value);
    if (!value) variables.erase(WideFromUtf8(name));
  }
  std::wstring block;
  for (const auto& [name, value] : variables) {
    block.append(name).append(L"=").append(value).append(1, L'\0');
  }
  return block + L'\0';
}

std::optional<std::wstring> EnvironmentVariable(const wchar_t* name) {
  SetLastError(ERROR_SUCCESS);
  auto value = TextOfCall(
      [&](wchar_t* text, DWORD room) { return GetEnvironmentVariableW(name, text, room); });
  if (value.empty() && GetLastError() != ERROR_SUCCESS) return std::nullopt;
  return value;
}

}  // namespace gorbex
