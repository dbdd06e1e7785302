#include "platform/windows/tool.h"

#include <windows.h>

#include <algorithm>
#include <array>
#include <chrono>
#include <cstddef>
#include <system_error>
#include <utility>

#include "platform/command_line.h"
#include "platform/running_tool.h"
#include "platform/windows/child_process.h"
#include "platform/windows/full_path.h"
#include "platform/windows/handle.h"
#include "platform/windows/system_error.h"
#include "platform/windows/system_message.h"
#include "platform/windows/wide_text.h"

namespace gorbex {
namespace {

using namespace std::chrono_literals;

/// The output of a tool on one of its streams. Only the content of the pipe is taken: a helper that
/// the tool leaves running may hold its end open forever.
class Output {
 public:
  explicit Output(std::string& text) : text_(text) {
    constexpr DWORD kRoom = 1U << 20U;
    HANDLE from = nullptr;
    HANDLE to = nullptr;
    RequireSuccess(CreatePipe(&from, &to, nullptr, kRoom) != 0);
    from_ = Handle(from);
    to_ = Handle(to);
  }

  [[nodiscard]] HANDLE ChildsEnd() const { return to_.Get(); }
  void CloseChildsEnd() { to_.Close(); }

  void Take() {
    std::array<char, 65536> bytes{};
    DWORD waiting = 0;
    while (text_.size() <= kMostToolOutput &&
           PeekNamedPipe(from_.Get(), nullptr, 0, nullptr, &waiting, nullptr) != 0 && waiting > 0) {
      const auto most = std::min(waiting, static_cast<DWORD>(bytes.size()));
      DWORD count = 0;
      if (ReadFile(from_.Get(), bytes.data(), most, &count, nullptr) == 0) break;
      text_.append(bytes.data(), count);
    }
  }

 private:
  std::string& text_;
  Handle from_;
  Handle to_;
};

/// The input of a tool, as a file that goes with its last handle: nobody waits for a tool that does
/// not read it. Null for no input.
Handle Input(const std::string& text) {
  if (text.empty()) return Handle();
  std::array<wchar_t, MAX_PATH + 1> folder{};
  std::array<wchar_t, MAX_PATH + 1> name{};
  RequireSuccess(GetTempPathW(folder.size(), folder.data()) != 0 &&
                 GetTempFileNameW(folder.data(), L"gbx", 0, name.data()) != 0);
  Handle file(CreateFileW(name.data(), GENERIC_READ | GENERIC_WRITE | DELETE, FILE_SHARE_DELETE,
                          nullptr, CREATE_ALWAYS,
                          FILE_ATTRIBUTE_TEMPORARY | FILE_FLAG_DELETE_ON_CLOSE, nullptr));
  DWORD written = 0;
  const auto size = static_cast<DWORD>(text.size());
  RequireSuccess(file && WriteFile(file.Get(), text.data(), size, &written, nullptr) != 0 &&
                 written == size &&
                 SetFilePointer(file.Get(), 0, nullptr, FILE_BEGIN) != INVALID_SET_FILE_POINTER);
  return file;
}

class WindowsTool : public RunningTool {
 public:
  WindowsTool(ChildStart start, const ToolCall& call)
      : input_(Input(call.input)), child_(Started(std::move(start))) {
    output_.CloseChildsEnd();
    errorOutput_.CloseChildsEnd();
  }
  ~WindowsTool() override {
    if (child_.ExitCode(0ms)) return;
    child_.Terminate();
    static_cast<void>(child_.ExitCode(5s));
  }
  WindowsTool(const WindowsTool&) = delete;
  WindowsTool& operator=(const WindowsTool&) = delete;

  [[nodiscard]] std::optional<std::uint32_t> Advance() override {
    constexpr auto kBetweenLooks = 5ms;
    const auto exitCode = child_.ExitCode(patience_);
    const auto before = Said();
    output_.Take();
    errorOutput_.Take();
    patience_ = Said() > before ? 0ms : kBetweenLooks;
    return exitCode;
  }

 private:
  ChildStart Started(ChildStart start) const {
    start.input = input_.Get();
    start.output = output_.ChildsEnd();
    start.errorOutput = errorOutput_.ChildsEnd();
    start.hasOwnConsole = true;
    return start;
  }

  [[nodiscard]] std::size_t Said() const { return output.size() + errorOutput.size(); }

  std::chrono::milliseconds patience_ = 0ms;
  Handle input_;
  Output output_{output};
  Output errorOutput_{errorOutput};
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
  // A wish to end the program is heard before the tool can do anything, not only while it runs.
  if (events_ != nullptr) events_->DoEvents();
  try {
    ChildStart start{*program, CommandLineOf(*program, call), EnvironmentWith(call.environment),
                     *folder};
    WindowsTool tool(std::move(start), call);
    return AwaitEnd(tool, call, events_);
  } catch (const std::system_error& error) {
    const auto number = static_cast<std::uint32_t>(error.code().value());
    return RuntimeError::WithReason(ErrorNumber::InvalidCall, call.program, SystemMessage(number));
  }
}

}  // namespace gorbex
