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
#include <memory>
#include <string_view>
#include <system_error>
#include <utility>

#include "platform/linux/child_process.h"
#include "platform/linux/host_file.h"
#include "platform/linux/system_error.h"
#include "platform/running_tool.h"

namespace gorbex {
namespace {

using namespace std::chrono_literals;

/// The output of a tool on one of its streams. Only the content of the pipe is waited for: a helper
/// that the tool leaves running may hold its end open forever.
class Output {
 public:
  explicit Output(std::string& text) : text_(text) {
    std::array<int, 2> ends{};
    RequireSuccess(pipe2(ends.data(), O_CLOEXEC) == 0);
    // Above the standard streams, which a child's start fills one by one.
    const Descriptor from(ends[0]);
    const Descriptor to(ends[1]);
    from_ = std::make_unique<Descriptor>(fcntl(ends[0], F_DUPFD_CLOEXEC, STDERR_FILENO + 1));
    to_ = std::make_unique<Descriptor>(fcntl(ends[1], F_DUPFD_CLOEXEC, STDERR_FILENO + 1));
    RequireSuccess(from_->Number() >= 0 && to_->Number() >= 0);
    RequireSuccess(fcntl(from_->Number(), F_SETFL, O_NONBLOCK) == 0);
  }

  [[nodiscard]] int ChildsEnd() const { return to_->Number(); }
  void CloseChildsEnd() { to_.reset(); }

  /// A number that poll ignores once the stream has ended.
  [[nodiscard]] int Number() const { return from_ ? from_->Number() : -1; }

  void Take() {
    std::array<char, 65536> bytes{};
    while (from_ && text_.size() <= kMostToolOutput) {
      const auto count = read(from_->Number(), bytes.data(), bytes.size());
      if (count > 0) text_.append(bytes.data(), static_cast<std::size_t>(count));
      if (count < 0 && errno == EINTR) continue;
      if (count < 0 && errno == EAGAIN) return;
      if (count <= 0) from_.reset();
    }
  }

 private:
  std::string& text_;
  std::unique_ptr<Descriptor> from_;
  std::unique_ptr<Descriptor> to_;
};

/// The input of a tool, as a file without a name: nobody waits for a tool that does not read it.
class Input {
 public:
  explicit Input(const std::string& text) {
    if (text.empty()) return;
    file_ = std::make_unique<Descriptor>(memfd_create("input", MFD_CLOEXEC));
    RequireSuccess(file_->Number() >= 0);
    if (file_->Number() <= STDERR_FILENO) {
      file_ =
          std::make_unique<Descriptor>(fcntl(file_->Number(), F_DUPFD_CLOEXEC, STDERR_FILENO + 1));
    }
    for (std::string_view rest = text; !rest.empty();) {
      const auto count = write(file_->Number(), rest.data(), rest.size());
      RequireSuccess(count >= 0 || errno == EINTR);
      rest.remove_prefix(static_cast<std::size_t>(std::max<ssize_t>(count, 0)));
    }
    RequireSuccess(lseek(file_->Number(), 0, SEEK_SET) == 0);
  }

  [[nodiscard]] int Number() const { return file_ ? file_->Number() : -1; }

 private:
  std::unique_ptr<Descriptor> file_;
};

class LinuxTool : public RunningTool {
 public:
  LinuxTool(ChildStart start, const ToolCall& call)
      : input_(call.input), child_(Started(std::move(start))) {
    output_.CloseChildsEnd();
    errorOutput_.CloseChildsEnd();
  }
  ~LinuxTool() override {
    if (!child_.ExitCode(0ms)) child_.End(5s);
  }
  LinuxTool(const LinuxTool&) = delete;
  LinuxTool& operator=(const LinuxTool&) = delete;

  [[nodiscard]] std::optional<std::uint32_t> Advance() override {
    const auto exitCode = child_.ExitCode(WaitForWords() ? 0ms : kMoment);
    output_.Take();
    errorOutput_.Take();
    return exitCode;
  }

 private:
  static constexpr auto kMoment = 20ms;

  ChildStart Started(ChildStart start) const {
    start.input = input_.Number();
    start.output = output_.ChildsEnd();
    start.errorOutput = errorOutput_.ChildsEnd();
    return start;
  }

  // False when there is nothing left to wait for but the child's end.
  [[nodiscard]] bool WaitForWords() const {
    if (output_.Number() < 0 && errorOutput_.Number() < 0) return false;
    std::array<pollfd, 2> streams{
        {{output_.Number(), POLLIN, 0}, {errorOutput_.Number(), POLLIN, 0}}};
    poll(streams.data(), streams.size(), static_cast<int>(kMoment.count()));
    return true;
  }

  Input input_;
  Output output_{output};
  Output errorOutput_{errorOutput};
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
  // A wish to end the program is heard before the tool can do anything, not only while it runs.
  if (events_ != nullptr) events_->DoEvents();
  try {
    LinuxTool tool(std::move(start), call);
    return AwaitEnd(tool, call, events_);
  } catch (const std::system_error& error) {
    return RuntimeError::WithReason(ErrorNumber::InvalidCall, call.program, error.code().message());
  }
}

}  // namespace gorbex
