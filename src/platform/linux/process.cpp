#include "platform/linux/process.h"

#include <fcntl.h>
#include <poll.h>
#include <spawn.h>
#include <sys/syscall.h>
#include <sys/wait.h>
#include <unistd.h>

#include <algorithm>
#include <array>
#include <cerrno>
#include <climits>
#include <csignal>
#include <cstdlib>
#include <system_error>
#include <thread>
#include <utility>

#include "platform/code_page.h"
#include "platform/linux/command_line.h"
#include "platform/linux/host_file.h"

namespace gorbex {
namespace {

using std::chrono::milliseconds;
using std::chrono::steady_clock;

constexpr const char* kSystemFolder = "C:\\windows\\system32";

/// A child of this process, watched through a descriptor of its own.
class ChildProcess : public Process {
 public:
  ChildProcess(pid_t id, std::function<void()> onEnded)
      : id_(id),
        watch_(static_cast<int>(syscall(SYS_pidfd_open, id, 0))),
        onEnded_(std::move(onEnded)) {}

  ~ChildProcess() override { Reap(); }

  [[nodiscard]] std::optional<std::uint32_t> ExitCode(milliseconds patience) override {
    if (!Reap()) {
      Wait(patience);
      Reap();
    }
    if (exitCode_ && onEnded_) std::exchange(onEnded_, nullptr)();
    return exitCode_;
  }

 private:
  bool Reap() {
    if (exitCode_) return true;
    int status = 0;
    pid_t ended = 0;
    do {
      ended = waitpid(id_, &status, WNOHANG);
    } while (ended < 0 && errno == EINTR);
    if (ended == 0) return false;
    // Where the system reaps children by itself their exit codes are lost.
    exitCode_ = ended < 0 ? 255 : CodeOf(status);
    return true;
  }

  static std::uint32_t CodeOf(int status) {
    const int code = WIFSIGNALED(status) ? 128 + WTERMSIG(status) : WEXITSTATUS(status);
    return static_cast<std::uint32_t>(code);
  }

  void Wait(milliseconds patience) {
    const auto longest = milliseconds(INT_MAX);
    const auto end = steady_clock::now() + std::clamp(patience, milliseconds(0), longest);
    for (auto left = patience; left.count() > 0;
         left = std::chrono::ceil<milliseconds>(end - steady_clock::now())) {
      if (watch_.Number() < 0) {
        std::this_thread::sleep_for(std::min(left, milliseconds(5)));
        if (Reap()) return;
      } else {
        pollfd watched{watch_.Number(), POLLIN, 0};
        const auto count = poll(&watched, 1, static_cast<int>(std::min(left, longest).count()));
        if (count > 0 || (count < 0 && errno != EINTR)) return;
      }
    }
  }

  pid_t id_;
  Descriptor watch_;
  std::function<void()> onEnded_;
  std::optional<std::uint32_t> exitCode_;
};

/// A tool that ran inside this program.
class EndedProcess : public Process {
 public:
  explicit EndedProcess(std::uint32_t exitCode) : exitCode_(exitCode) {}
  [[nodiscard]] std::optional<std::uint32_t> ExitCode(milliseconds /*patience*/) override {
    return exitCode_;
  }

 private:
  std::uint32_t exitCode_;
};

std::optional<std::string_view> RegSvr32Arguments(std::string_view commandLine) {
  const auto name = commandLine.substr(0, commandLine.find(' '));
  if (!EqualsIgnoringCase(name, "RegSvr32") && !EqualsIgnoringCase(name, "RegSvr32.exe")) {
    return std::nullopt;
  }
  return commandLine.substr(name.size());
}

/// Null-terminated pointers to texts, as the system's calls want them.
class PointerList {
 public:
  explicit PointerList(std::vector<std::string> texts) : texts_(std::move(texts)) {
    for (auto& text : texts_) pointers_.push_back(text.data());
    pointers_.push_back(nullptr);
  }

  [[nodiscard]] char* const* Get() const { return pointers_.data(); }

 private:
  std::vector<std::string> texts_;
  std::vector<char*> pointers_;
};

/// How a child starts: nothing to read, its output on our error output, no other open file, and no
/// signal blocked or ignored on our account.
class SpawnSettings {
 public:
  SpawnSettings() {
    posix_spawn_file_actions_init(&actions_);
    posix_spawn_file_actions_addopen(&actions_, STDIN_FILENO, "/dev/null", O_RDONLY, 0);
    posix_spawn_file_actions_adddup2(&actions_, STDERR_FILENO, STDOUT_FILENO);
    posix_spawn_file_actions_addclosefrom_np(&actions_, STDERR_FILENO + 1);
    posix_spawnattr_init(&attributes_);
    sigset_t signals{};
    sigemptyset(&signals);
    posix_spawnattr_setsigmask(&attributes_, &signals);
    sigaddset(&signals, SIGPIPE);
    sigaddset(&signals, SIGCHLD);
    posix_spawnattr_setsigdefault(&attributes_, &signals);
    posix_spawnattr_setflags(&attributes_, POSIX_SPAWN_SETSIGMASK | POSIX_SPAWN_SETSIGDEF);
  }
  ~SpawnSettings() {
    posix_spawnattr_destroy(&attributes_);
    posix_spawn_file_actions_destroy(&actions_);
  }
  SpawnSettings(const SpawnSettings&) = delete;
  SpawnSettings& operator=(const SpawnSettings&) = delete;

  [[nodiscard]] const posix_spawn_file_actions_t* Actions() const { return &actions_; }
  [[nodiscard]] const posix_spawnattr_t* Attributes() const { return &attributes_; }

 private:
  posix_spawn_file_actions_t actions_{};
  posix_spawnattr_t attributes_{};
};

std::optional<std::string> FindOnHost(const std::string& name) {
  const char* folders = std::getenv("PATH");
  std::string_view rest = folders != nullptr ? folders : "/usr/local/bin:/usr/bin:/bin";
  while (!rest.empty()) {
    const auto folder = rest.substr(0, rest.find(':'));
    rest.remove_prefix(std::min(folder.size() + 1, rest.size()));
    auto path = std::string(folder.empty() ? "." : folder) + "/" + name;
    struct stat info {};
    const bool isFile = stat(path.c_str(), &info) == 0 && S_ISREG(info.st_mode);
    if (isFile && access(path.c_str(), X_OK) == 0) return path;
  }
  return std::nullopt;
}

bool IsWindowsProgram(const std::string& hostPath) {
  const Descriptor file(open(hostPath.c_str(), O_RDONLY | O_CLOEXEC | O_NONBLOCK));
  std::array<char, 2> mark{};
  return file.Number() >= 0 && read(file.Number(), mark.data(), mark.size()) == 2 &&
         mark[0] == 'M' && mark[1] == 'Z';
}

RuntimeError NotFound(const std::string& description) {
  return RuntimeError::WithDescription(ErrorNumber::FileNotFound, description);
}

}  // namespace

LinuxProcessLauncher::LinuxProcessLauncher(const Prefix& prefix, std::string programFolder,
                                           std::function<void()> onEnded, RegSvr32 regSvr32)
    : prefix_(prefix),
      programFolder_(std::move(programFolder)),
      onEnded_(std::move(onEnded)),
      regSvr32_(std::move(regSvr32)) {}

std::optional<LinuxProcessLauncher::Program> LinuxProcessLauncher::Locate(
    const std::string& name) const {
  std::vector<std::string> places = {name};
  const bool isBare = name.find_first_of("\\/:") == std::string::npos;
  if (isBare) places = {programFolder_ + "\\" + name, std::string(kSystemFolder) + "\\" + name};
  for (const auto& place : places) {
    const auto entry = prefix_.Find(place);
    if (entry && S_ISREG(entry->info.st_mode)) return Program{entry->path, place};
  }
  const auto onHost = isBare ? FindOnHost(ToUtf8(name)) : std::nullopt;
  if (!onHost) return std::nullopt;
  return Program{*onHost, {}};
}

std::vector<std::string> LinuxProcessLauncher::Arguments(const Program& program,
                                                         std::string_view arguments) const {
  std::vector<std::string> all = {program.hostPath};
  if (IsWindowsProgram(program.hostPath)) {
    auto wine = FindOnHost("wine");
    if (!wine) wine = FindOnHost("wine64");
    const auto& name = program.windowsPath.empty() ? program.hostPath : program.windowsPath;
    if (!wine) throw NotFound("File not found: 'wine', which is needed to run '" + name + "'");
    // Wine knows the drives of its own prefix alone.
    const bool isKnown = prefix_.IsWine() && !program.windowsPath.empty();
    all = {*wine, isKnown ? ToUtf8(program.windowsPath) : program.hostPath};
  }
  for (const auto& argument : SplitArguments(arguments)) all.push_back(ToUtf8(argument));
  return all;
}

std::vector<std::string> LinuxProcessLauncher::ChildEnvironment() const {
  std::vector<std::string> all = {"GORBEX_PREFIX=" + prefix_.Root().native()};
  if (prefix_.IsWine()) all.push_back("WINEPREFIX=" + prefix_.Root().native());
  const auto own = all.size();
  for (char** entry = environ; entry != nullptr && *entry != nullptr; ++entry) {
    const std::string_view text(*entry);
    const auto name = text.substr(0, text.find('=') + 1);
    const auto replaces = [&](const std::string& set) { return set.starts_with(name); };
    const auto end = all.begin() + static_cast<std::ptrdiff_t>(own);
    if (std::none_of(all.begin(), end, replaces)) all.emplace_back(text);
  }
  return all;
}

StartResult LinuxProcessLauncher::Start(const std::string& commandLine) {
  const auto text = std::string_view(commandLine).substr(0, commandLine.find('\0'));
  if (const auto arguments = RegSvr32Arguments(text); arguments && regSvr32_ && !prefix_.IsWine()) {
    return std::make_unique<EndedProcess>(regSvr32_(*arguments));
  }
  std::optional<Program> program;
  const auto found = FindProgram(text, [&](const std::string& candidate) {
    program = Locate(candidate);
    return program.has_value();
  });
  if (!found || !program) return RuntimeError(ErrorNumber::FileNotFound, ProgramText(text));
  try {
    const PointerList arguments(Arguments(*program, found->arguments));
    const PointerList environment(ChildEnvironment());
    const SpawnSettings settings;
    pid_t id = 0;
    const int error = posix_spawn(&id, arguments.Get()[0], settings.Actions(),
                                  settings.Attributes(), arguments.Get(), environment.Get());
    if (error == 0) return std::make_unique<ChildProcess>(id, onEnded_);
    const RuntimeError refused(ErrorNumber::InvalidCall, found->program);
    return RuntimeError::WithDescription(
        refused.Code(),
        refused.Description() + " (" + std::generic_category().message(error) + ")");
  } catch (const RuntimeError& error) {
    return error;
  }
}

}  // namespace gorbex
