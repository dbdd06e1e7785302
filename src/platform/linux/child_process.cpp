#include "platform/linux/child_process.h"

#include <fcntl.h>
#include <poll.h>
#include <spawn.h>
#include <sys/syscall.h>
#include <sys/wait.h>

#include <algorithm>
#include <array>
#include <atomic>
#include <cerrno>
#include <climits>
#include <csignal>
#include <cstdlib>
#include <string_view>
#include <system_error>
#include <thread>
#include <utility>

#include "platform/plain_text.h"

namespace gorbex {
namespace {

using std::chrono::milliseconds;
using std::chrono::steady_clock;

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

class SpawnSettings {
 public:
  explicit SpawnSettings(const ChildStart& start) {
    posix_spawn_file_actions_init(&actions_);
    Give(start.input, STDIN_FILENO);
    Give(start.output, STDOUT_FILENO);
    Give(start.errorOutput, STDERR_FILENO);
    posix_spawn_file_actions_addclosefrom_np(&actions_, STDERR_FILENO + 1);
    if (!start.folder.empty()) {
      posix_spawn_file_actions_addchdir_np(&actions_, start.folder.c_str());
    }
    posix_spawnattr_init(&attributes_);
    sigset_t signals{};
    sigemptyset(&signals);
    posix_spawnattr_setsigmask(&attributes_, &signals);
    sigaddset(&signals, SIGPIPE);
    sigaddset(&signals, SIGCHLD);
    sigaddset(&signals, SIGXFSZ);
    posix_spawnattr_setsigdefault(&attributes_, &signals);
    constexpr int kFlags = POSIX_SPAWN_SETSIGMASK | POSIX_SPAWN_SETSIGDEF | POSIX_SPAWN_SETSID;
    posix_spawnattr_setflags(&attributes_, static_cast<short>(kFlags));
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
  void Give(int ours, int childs) {
    if (ours < 0) {
      posix_spawn_file_actions_addopen(&actions_, childs, "/dev/null", O_RDWR, 0);
    } else {
      posix_spawn_file_actions_adddup2(&actions_, ours, childs);
    }
  }

  posix_spawn_file_actions_t actions_{};
  posix_spawnattr_t attributes_{};
};

// The children that are waited for. A signal handler reaches nothing but globals; a run has at most
// 64 compilers, and no more than a few other programs run beside them.
std::array<std::atomic<pid_t>, 80> running{};

void Replace(pid_t from, pid_t to) {
  for (auto& place : running) {
    pid_t expected = from;
    if (place.compare_exchange_strong(expected, to)) return;
  }
}

pid_t Spawn(const ChildStart& start) {
  const PointerList arguments(start.arguments);
  const PointerList environment(start.environment);
  const SpawnSettings settings(start);
  pid_t id = 0;
  const int error = posix_spawn(&id, arguments.Get()[0], settings.Actions(), settings.Attributes(),
                                arguments.Get(), environment.Get());
  if (error != 0) throw std::system_error(error, std::generic_category());
  Replace(0, id);
  return id;
}

bool IsProgram(const std::string& path) {
  struct stat info {};
  const bool isFile = stat(path.c_str(), &info) == 0 && S_ISREG(info.st_mode);
  return isFile && access(path.c_str(), X_OK) == 0;
}

std::uint32_t CodeOf(int status) {
  const int code = WIFSIGNALED(status) ? 128 + WTERMSIG(status) : WEXITSTATUS(status);
  return static_cast<std::uint32_t>(code);
}

}  // namespace

ChildProcess::ChildProcess(const ChildStart& start, std::function<void()> onEnded)
    : id_(Spawn(start)),
      watch_(static_cast<int>(syscall(SYS_pidfd_open, id_, 0))),
      onEnded_(std::move(onEnded)) {}

ChildProcess::~ChildProcess() {
  Replace(id_, 0);
  Reap();
}

std::optional<std::uint32_t> ChildProcess::ExitCode(milliseconds patience) {
  if (!Reap()) {
    Wait(patience);
    Reap();
  }
  if (exitCode_ && onEnded_) std::exchange(onEnded_, nullptr)();
  return exitCode_;
}

void ChildProcess::Terminate() {
  if (!Reap()) kill(-id_, SIGKILL);
}

void ChildProcess::OutliveProgram() {
  Replace(id_, 0);
}

void ChildProcess::End(milliseconds patience) {
  constexpr auto kHelpersPatience = milliseconds(1000);
  if (Reap()) return;
  kill(-id_, SIGTERM);
  Wait(patience);
  const auto end = steady_clock::now() + kHelpersPatience;
  while (Reap() && kill(-id_, 0) == 0 && steady_clock::now() < end) {
    std::this_thread::sleep_for(milliseconds(5));
  }
  kill(-id_, SIGKILL);
  static_cast<void>(ExitCode(patience));
}

void ChildProcess::TerminateAll() {
  for (const auto& place : running) {
    const pid_t id = place;
    if (id > 0) kill(-id, SIGKILL);
  }
}

bool ChildProcess::Reap() {
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

void ChildProcess::Wait(milliseconds patience) {
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

std::optional<std::string> FindOnHost(const std::string& name) {
  if (name.starts_with('/')) return IsProgram(name) ? std::optional(name) : std::nullopt;
  const char* folders = std::getenv("PATH");
  for (const auto folder :
       Split(folders != nullptr ? folders : "/usr/local/bin:/usr/bin:/bin", ':')) {
    // A relative folder would mean another one where the child runs.
    if (!folder.starts_with('/')) continue;
    auto path = std::string(folder) + "/" + name;
    if (IsProgram(path)) return path;
  }
  return std::nullopt;
}

std::vector<std::string> EnvironmentWith(
    const std::map<std::string, std::optional<std::string>>& changes) {
  std::vector<std::string> all;
  for (const auto& [name, value] : changes) {
    if (value) all.push_back(name + "=" + *value);
  }
  for (char** entry = environ; entry != nullptr && *entry != nullptr; ++entry) {
    const std::string_view text(*entry);
    if (!changes.contains(std::string(text.substr(0, text.find('='))))) all.emplace_back(text);
  }
  return all;
}

}  // namespace gorbex
