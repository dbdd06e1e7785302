#include "platform/windows/tool.h"

#include <windows.h>

#include <algorithm>
#include <array>
#include <chrono>
#include <cstddef>
#include <system_error>
#include <utility>

#include "platform/command_line.h"
#include "platform/windows/child_process.h"
#include "platform/windows/full_path.h"
#include "platform/windows/handle.h"
#include "platform/windows/system_message.h"
#include "platform/windows/wide_text.h"

namespace gorbex {
namespace {

using namespace std::chrono_literals;

constexpr std::size_t kMostOutput = std::size_t{256} << 20U;

constexpr auto kBetweenEvents = 20ms;

/// What a tool says on one of its streams. Only what stands in the pipe is taken: a helper that the
/// tool leaves behind may hold its end open for ever.
class Output {
 public:
  Output() {
    constexpr DWORD kRoom = 1U << 20U;
    HANDLE from = nullptr;
    HANDLE to = nullptr;
    if (CreatePipe(&from, &to, nullptr, kRoom) == 0) {
      throw std::system_error(static_cast<int>(GetLastError()), std::system_category());
    }
    from_ = Handle(from);
    to_ = Handle(to);
  }

  [[nodiscard]] HANDLE ChildsEnd() const { return to_.Get(); }
  void CloseChildsEnd() { to_.Close(); }

  void Take() {
    std::array<char, 65536> bytes{};
    DWORD waiting = 0;
    while (text.size() <= kMostOutput &&
           PeekNamedPipe(from_.Get(), nullptr, 0, nullptr, &waiting, nullptr) != 0 && waiting > 0) {
      const auto most = std::min(waiting, static_cast<DWORD>(bytes.size()));
      DWORD count = 0;
      if (ReadFile(from_.Get(), bytes.data(), most, &count, nullptr) == 0) break;
      text.append(bytes.data(), count);
    }
  }

  std::string text;

 private:
  Handle from_;
  Handle to_;
};

/// What a tool reads, as a file that goes with its last handle: a tool that reads nothing of it
/// holds nobody up. Null when there is nothing to read.
Handle Input(const std::string& text) {
  if (text.empty()) return Handle();
  std::array<wchar_t, MAX_PATH + 1> folder{};
  std::array<wchar_t, MAX_PATH + 1> name{};
  if (GetTempPathW(folder.size(), folder.data()) == 0 ||
      GetTempFileNameW(folder.data(), L"gbx", 0, name.data()) == 0) {
    throw std::system_error(static_cast<int>(GetLastError()), std::system_category());
  }
  Handle file(CreateFileW(name.data(), GENERIC_READ | GENERIC_WRITE | DELETE, FILE_SHARE_DELETE,
                          nullptr, CREATE_ALWAYS,
                          FILE_ATTRIBUTE_TEMPORARY | FILE_FLAG_DELETE_ON_CLOSE, nullptr));
  DWORD written = 0;
  if (!file ||
      WriteFile(file.Get(), text.data(), static_cast<DWORD>(text.size()), &written, nullptr) == 0 ||
      written != text.size() ||
      SetFilePointer(file.Get(), 0, nullptr, FILE_BEGIN) == INVALID_SET_FILE_POINTER) {
    throw std::system_error(static_cast<int>(GetLastError()), std::system_category());
  }
  return file;
}

/// Leaves no tool running when its caller stops waiting for it.
class WaitedFor {
 public:
  explicit WaitedFor(ChildProcess& child) : child_(child) {}
  ~WaitedFor() {
    if (child_.ExitCode(0ms)) return;
    child_.Terminate();
    static_cast<void>(child_.ExitCode(5s));
  }
  WaitedFor(const WaitedFor&) = delete;
  WaitedFor& operator=(const WaitedFor&) = delete;

 private:
  ChildProcess& child_;
};

/// One child on its way to its end, taking what it says and letting events be handled.
class RunningTool {
 public:
  RunningTool(ChildStart start, EventPump* events, const ToolCall& call)
      : events_(events), call_(call), input_(Input(call.input)), child_(Started(std::move(start))) {
    output_.CloseChildsEnd();
    errorOutput_.CloseChildsEnd();
  }

  [[nodiscard]] ToolOutcome Result() {
    constexpr auto kBetweenLooks = 5ms;
    const WaitedFor guard(child_);
    for (auto patience = 0ms;;) {
      const auto exitCode = child_.ExitCode(patience);
      const auto before = Said();
      output_.Take();
      errorOutput_.Take();
      if (Said() > kMostOutput) return RuntimeError(ErrorNumber::OutOfMemory, call_.program);
      if (exitCode) {
        return ToolResult{*exitCode, std::move(output_.text), std::move(errorOutput_.text)};
      }
      if (call_.patience && std::chrono::steady_clock::now() - start_ > *call_.patience) {
        return RuntimeError::WithDescription(ErrorNumber::InvalidCall,
                                             "'" + call_.program + "' took too long");
      }
      patience = Said() > before ? 0ms : kBetweenLooks;
      HandleEvents();
    }
  }

 private:
  ChildStart Started(ChildStart start) const {
    start.input = input_.Get();
    start.output = output_.ChildsEnd();
    start.errorOutput = errorOutput_.ChildsEnd();
    return start;
  }

  [[nodiscard]] std::size_t Said() const { return output_.text.size() + errorOutput_.text.size(); }

  void HandleEvents() {
    const auto now = std::chrono::steady_clock::now();
    if (events_ == nullptr || now - lastEvents_ < kBetweenEvents) return;
    events_->DoEvents();
    lastEvents_ = std::chrono::steady_clock::now();
  }

  EventPump* events_;
  const ToolCall& call_;
  std::chrono::steady_clock::time_point start_ = std::chrono::steady_clock::now();
  std::chrono::steady_clock::time_point lastEvents_ = start_;
  Handle input_;
  Output output_;
  Output errorOutput_;
  ChildProcess child_;
};

std::wstring CommandLineOf(const std::wstring& program, const ToolCall& call) {
  return L"\"" + program + L"\"" + WideFromUtf8(JoinArguments(call.arguments));
}

std::optional<std::wstring> FolderOf(const std::string& path) {
  auto folder = FullPathOf(path);
  if (!folder || IsDevice(*folder)) return std::nullopt;
  const DWORD attributes = GetFileAttributesW(folder->c_str());
  const bool isFolder =
      attributes != INVALID_FILE_ATTRIBUTES && (attributes & FILE_ATTRIBUTE_DIRECTORY) != 0;
  return isFolder ? std::move(folder) : std::nullopt;
}

}  // namespace

ToolOutcome WindowsToolRunner::Run(const ToolCall& call) {
  const auto program = FindInPath(WideFromUtf8(call.program));
  if (!program) return RuntimeError(ErrorNumber::FileNotFound, call.program);
  const auto folder = FolderOf(call.folder);
  if (!folder) return RuntimeError(ErrorNumber::PathNotFound, call.folder);
  try {
    ChildStart start{*program, CommandLineOf(*program, call), EnvironmentWith(call.environment),
                     *folder};
    return RunningTool(std::move(start), events_, call).Result();
  } catch (const std::system_error& error) {
    const RuntimeError refused(ErrorNumber::InvalidCall, call.program);
    const auto number = static_cast<std::uint32_t>(error.code().value());
    return RuntimeError::WithDescription(
        refused.Code(), refused.Description() + " (" + SystemMessage(number) + ")");
  }
}

}  // namespace gorbex
