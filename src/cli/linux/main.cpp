#include <fcntl.h>
#include <poll.h>
#include <sys/ioctl.h>
#include <termios.h>
#include <unistd.h>

#include <algorithm>
#include <array>
#include <cerrno>
#include <csignal>
#include <iostream>
#include <string>
#include <vector>

#include "cli/cli.h"
#include "platform/git/ask_pass.h"
#include "platform/linux/end_signal.h"
#include "platform/linux/host.h"

namespace {

// A file opened later must not take the place of a stream that the caller closed.
void OpenStandardStreams() {
  for (const int stream : {STDIN_FILENO, STDOUT_FILENO, STDERR_FILENO}) {
    if (fcntl(stream, F_GETFD) < 0 && errno == EBADF) static_cast<void>(open("/dev/null", O_RDWR));
  }
}

constexpr std::array kEndingSignals{SIGINT, SIGTERM, SIGHUP, SIGQUIT};

/// Hides what is typed at the terminal, and shows it again also when a signal ends the program.
/// Afterwards signals do what they did before.
class HiddenTyping {
 public:
  HiddenTyping() : isTerminal_(tcgetattr(STDIN_FILENO, &shown_) == 0) {
    if (!isTerminal_) return;
    termios hidden = shown_;
    hidden.c_lflag &= ~static_cast<tcflag_t>(ECHO);
    struct sigaction ending {};
    ending.sa_handler = End;
    for (std::size_t i = 0; i < kEndingSignals.size(); ++i) {
      sigaction(kEndingSignals.at(i), &ending, &before_.at(i));
    }
    static_cast<void>(tcsetattr(STDIN_FILENO, TCSAFLUSH, &hidden));
  }
  ~HiddenTyping() {
    if (!isTerminal_) return;
    static_cast<void>(tcsetattr(STDIN_FILENO, TCSAFLUSH, &shown_));
    for (std::size_t i = 0; i < kEndingSignals.size(); ++i) {
      sigaction(kEndingSignals.at(i), &before_.at(i), nullptr);
    }
  }
  HiddenTyping(const HiddenTyping&) = delete;
  HiddenTyping& operator=(const HiddenTyping&) = delete;

 private:
  static void End(int signal) {
    static_cast<void>(tcsetattr(STDIN_FILENO, TCSANOW, &shown_));
    static_cast<void>(std::signal(signal, SIG_DFL));
    static_cast<void>(std::raise(signal));
  }

  static inline termios shown_{};  // a signal handler reaches nothing else
  std::array<struct sigaction, kEndingSignals.size()> before_{};
  bool isTerminal_;
};

// A line that the terminal does not show while it is typed.
std::optional<std::string> ReadSecret() {
  const HiddenTyping hidden;
  std::string line;
  return std::getline(std::cin, line) ? std::optional(line) : std::nullopt;
}

// A signal by itself does not end a read of a terminal. Text typed ahead may be in the stream
// already.
bool AwaitInput() {
  constexpr int kMoment = 100;
  pollfd input{STDIN_FILENO, POLLIN, 0};
  while (std::cin.rdbuf()->in_avail() <= 0 && poll(&input, 1, kMoment) <= 0) {
    if (gorbex::EndSignal::Wanted()) return false;
  }
  return true;
}

bool MovesCursor() {
  const auto terminal = gorbex::Environment("TERM");
  return terminal && !terminal->empty() && *terminal != "dumb";
}

gorbex::cli::TerminalSize SizeOfTerminal() {
  winsize size{};
  const bool isKnown = ioctl(STDERR_FILENO, TIOCGWINSZ, &size) == 0 && size.ws_col > 0;
  return isKnown ? gorbex::cli::TerminalSize{size.ws_col, size.ws_row}
                 : gorbex::cli::TerminalSize{};
}

bool OutputHasNoReader() {
  pollfd output{STDOUT_FILENO, POLLOUT, 0};
  return poll(&output, 1, 0) > 0 && (output.revents & POLLERR) != 0;
}

// The status, unless the output is lost: a reader that left ends us as it ends every program.
int StatusWithOutput(int status) {
  std::cout.flush();
  if (std::cout || status != 0) return status;
  if (OutputHasNoReader()) {
    static_cast<void>(std::signal(SIGPIPE, SIG_DFL));
    static_cast<void>(std::raise(SIGPIPE));
  }
  std::cerr << "gorbex: the output could not be written\n";
  return static_cast<int>(gorbex::cli::ExitStatus::Unusable);
}

}  // namespace

int main(int count, char** values) {
  OpenStandardStreams();
  const std::vector<std::string> arguments(values + std::min(count, 1), values + count);
  const auto answered = gorbex::AnswerAskPass(arguments, gorbex::Environment, std::cout);
  if (answered) return *answered;
  // A run goes on when the reader of its lines leaves: project files must get their values back.
  static_cast<void>(std::signal(SIGPIPE, SIG_IGN));
  // A file that may not grow further is an error like a full disk, not the end of the program.
  static_cast<void>(std::signal(SIGXFSZ, SIG_IGN));
  gorbex::EndSignal::Obey();
  std::ios::sync_with_stdio(false);
  const gorbex::cli::Streams streams{
      std::cin,
      std::cout,
      std::cerr,
      isatty(STDIN_FILENO) != 0 && isatty(STDERR_FILENO) != 0,
      isatty(STDERR_FILENO) != 0,
      MovesCursor(),
      ReadSecret,
      gorbex::TakeFromEnvironment(gorbex::kPasswordVariable),
      AwaitInput,
      isatty(STDOUT_FILENO) != 0 && gorbex::cli::WantsColours(gorbex::Environment),
      gorbex::cli::CiSystemOf(gorbex::Environment),
      nullptr,
      nullptr,
      SizeOfTerminal};
  return StatusWithOutput(
      gorbex::cli::RunCli(arguments, streams, [](const std::optional<std::string>& prefix) {
        return std::make_unique<gorbex::LinuxHost>(prefix);
      }));
}
