#include "platform/linux/tool.h"

#include <fcntl.h>
#include <poll.h>
#include <sys/mman.h>
#include <unistd.h>

#include <algorithm>
#include <array>
#include <cerrno>
#include <chrono>
#include <cstddef>
#include <filesystem>
#include <memory>
#include <string_view>
#include <system_error>
#include <utility>

#include "platform/linux/child_process.h"
#include "platform/linux/host_file.h"

namespace gorbex {
namespace {

using namespace std::chrono_literals;

constexpr std::size_t kMostOutput = std::size_t{256} << 20U;

constexpr auto kBetweenEvents = 20ms;

void Require(bool succeeded) {
  if (!succeeded) throw std::system_error(errno, std::generic_category());
}

/// What a tool says on one of its streams. Only what stands in the pipe is waited for: a helper
/// that the tool leaves behind may hold its end open for ever.
class Output {
 public:
  Output() {
    std::array<int, 2> ends{};
    Require(pipe2(ends.data(), O_CLOEXEC) == 0);
    // Above the standard streams, which a child's start fills one by one.
    const Descriptor from(ends[0]);
    const Descriptor to(ends[1]);
    from_ = std::make_unique<Descriptor>(fcntl(ends[0], F_DUPFD_CLOEXEC, STDERR_FILENO + 1));
    to_ = std::make_unique<Descriptor>(fcntl(ends[1], F_DUPFD_CLOEXEC, STDERR_FILENO + 1));
    Require(from_->Number() >= 0 && to_->Number() >= 0);
    Require(fcntl(from_->Number(), F_SETFL, O_NONBLOCK) == 0);
  }

  [[nodiscard]] int ChildsEnd() const { return to_->Number(); }
  void CloseChildsEnd() { to_.reset(); }

  /// A number that poll passes over once the stream has ended.
  [[nodiscard]] int Number() const { return from_ ? from_->Number() : -1; }

  void Take() {
    std::array<char, 65536> bytes{};
    while (from_ && text.size() <= kMostOutput) {
      const auto count = read(from_->Number(), bytes.data(), bytes.size());
      if (count > 0) text.append(bytes.data(), static_cast<std::size_t>(count));
      if (count < 0 && errno == EINTR) continue;
      if (count < 0 && errno == EAGAIN) return;
      if (count <= 0) from_.reset();
    }
  }

  std::string text;

 private:
  std::unique_ptr<Descriptor> from_;
  std::unique_ptr<Descriptor> to_;
};

/// What a tool reads, as a file without a name: a tool that reads nothing of it holds nobody up.
class Input {
 public:
  explicit Input(const std::string& text) {
    if (text.empty()) return;
    file_ = std::make_unique<Descriptor>(memfd_create("input", MFD_CLOEXEC));
    Require(file_->Number() >= 0);
    if (file_->Number() <= STDERR_FILENO) {
      file_ =
          std::make_unique<Descriptor>(fcntl(file_->Number(), F_DUPFD_CLOEXEC, STDERR_FILENO + 1));
    }
    for (std::string_view rest = text; !rest.empty();) {
      const auto count = write(file_->Number(), rest.data(), rest.size());
      Require(count >= 0 || errno == EINTR);
      rest.remove_prefix(static_cast<std::size_t>(std::max<ssize_t>(count, 0)));
    }
    Require(lseek(file_->Number(), 0, SEEK_SET) == 0);
  }

  [[nodiscard]] int Number() const { return file_ ? file_->Number() : -1; }

 private:
  std::unique_ptr<Descriptor> file_;
};

/// Leaves no tool running when its caller stops waiting for it.
class WaitedFor {
 public:
  explicit WaitedFor(ChildProcess& child) : child_(child) {}
  ~WaitedFor() {
    if (child_.ExitCode(0ms)) return;
    child_.Interrupt();
    if (child_.ExitCode(5s)) return;
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
      : events_(events), call_(call), input_(call.input), child_(Started(std::move(start))) {}

  [[nodiscard]] ToolOutcome Result() {
    const WaitedFor guard(child_);
    for (;;) {
      const auto exitCode = child_.ExitCode(WaitForWords() ? 0ms : kBetweenEvents);
      output_.Take();
      errorOutput_.Take();
      if (output_.text.size() + errorOutput_.text.size() > kMostOutput) {
        return RuntimeError(ErrorNumber::OutOfMemory, call_.program);
      }
      if (exitCode) {
        return ToolResult{*exitCode, std::move(output_.text), std::move(errorOutput_.text)};
      }
      if (call_.patience && std::chrono::steady_clock::now() - start_ > *call_.patience) {
        return RuntimeError::WithDescription(ErrorNumber::InvalidCall,
                                             "'" + call_.program + "' took too long");
      }
      HandleEvents();
    }
  }

 private:
  ChildStart Started(ChildStart start) const {
    start.input = input_.Number();
    start.output = output_.ChildsEnd();
    start.errorOutput = errorOutput_.ChildsEnd();
    start.hasOwnSession = true;
    return start;
  }

  // False when there is nothing left to wait for but the child's end.
  bool WaitForWords() {
    output_.CloseChildsEnd();
    errorOutput_.CloseChildsEnd();
    if (output_.Number() < 0 && errorOutput_.Number() < 0) return false;
    std::array<pollfd, 2> streams{
        {{output_.Number(), POLLIN, 0}, {errorOutput_.Number(), POLLIN, 0}}};
    poll(streams.data(), streams.size(), static_cast<int>(kBetweenEvents.count()));
    return true;
  }

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
  Input input_;
  Output output_;
  Output errorOutput_;
  ChildProcess child_;
};

}  // namespace

ToolOutcome LinuxToolRunner::Run(const ToolCall& call) {
  const auto program = FindOnHost(call.program);
  if (!program) return RuntimeError(ErrorNumber::FileNotFound, call.program);
  const auto folder = prefix_.Existing(call.folder);
  if (!folder) return RuntimeError(ErrorNumber::PathNotFound, call.folder);
  ChildStart start{{*program}, EnvironmentWith(call.environment), *folder};
  start.arguments.insert(start.arguments.end(), call.arguments.begin(), call.arguments.end());
  try {
    return RunningTool(std::move(start), events_, call).Result();
  } catch (const std::system_error& error) {
    const RuntimeError refused(ErrorNumber::InvalidCall, call.program);
    return RuntimeError::WithDescription(
        refused.Code(), refused.Description() + " (" + error.code().message() + ")");
  }
}

std::string OwnProgram() {
  std::error_code error;
  const auto path = std::filesystem::read_symlink("/proc/self/exe", error);
  return error ? std::string() : path.native();
}

}  // namespace gorbex
