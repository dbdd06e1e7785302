#include <windows.h>

#include <algorithm>
#include <iostream>

#include "cli/cli.h"
#include "cli/windows/console.h"
#include "platform/git/ask_pass.h"
#include "platform/runtime_error.h"
#include "platform/windows/child_process.h"
#include "platform/windows/end_signal.h"
#include "platform/windows/library_search.h"
#include "platform/windows/platform.h"
#include "platform/windows/program_lock.h"
#include "platform/windows/typed_path.h"
#include "platform/windows/wide_text.h"

namespace {

std::optional<std::string> Environment(const char* name) {
  const auto value = gorbex::EnvironmentVariable(gorbex::WideFromUtf8(name).c_str());
  if (!value || value->empty()) return std::nullopt;
  return gorbex::Utf8FromWide(*value);
}

class WindowsHost : public gorbex::cli::Host {
 public:
  explicit WindowsHost(const std::optional<std::string>& prefix) {
    if (!prefix) return;
    throw gorbex::RuntimeError::WithDescription(gorbex::ErrorNumber::InvalidCall,
                                                "--prefix is for systems other than Windows");
  }

  gorbex::PlatformServices Services(gorbex::EventPump& events) override {
    return platform_.Services(events);
  }

  [[nodiscard]] std::string ProgramPath(const std::string& typed) const override {
    return gorbex::ProgramPathOf(typed);
  }

  std::shared_ptr<void> BuildAlone() override {
    return gorbex::ProgramLock::Try(gorbex::ProgramLock::ToBuild(platform_.ProgramFolder()));
  }

  std::shared_ptr<void> ChangeAlone(const std::function<void()>& onWait) override {
    const auto lock = gorbex::ProgramLock::ToChange(platform_.ProgramFolder());
    return std::make_shared<gorbex::ProgramLock>(lock, onWait);
  }

  void ListenForEnd() override { gorbex::EndSignal::Listen(); }
  [[nodiscard]] bool EndWanted() const override { return gorbex::EndSignal::Wanted(); }
  void Wait(std::chrono::milliseconds time) override { gorbex::EndSignal::Wait(time); }

 private:
  gorbex::WindowsPlatform platform_;
};

// The password is for this program; what it starts does not inherit it.
std::string TakePassword() {
  constexpr const char* kName = "GORBEX_SCC_PASSWORD";
  std::string password = Environment(kName).value_or("");
  SetEnvironmentVariableW(gorbex::WideFromUtf8(kName).c_str(), nullptr);
  return password;
}

std::optional<std::string> ReadSecret() {
  const gorbex::cli::HiddenTyping hidden;
  std::string line;
  return std::getline(std::cin, line) ? std::optional(line) : std::nullopt;
}

// The status, unless the output is lost.
int StatusWithOutput(int status) {
  std::cout.flush();
  if (std::cout || status != 0) return status;
  std::cerr << "gorbex: the output could not be written\n";
  return static_cast<int>(gorbex::cli::ExitStatus::Unusable);
}

int Run(const std::vector<std::string>& arguments) {
  const bool asks = gorbex::cli::IsConsole(STD_INPUT_HANDLE);
  const bool animates = gorbex::cli::IsConsole(STD_ERROR_HANDLE);
  const gorbex::cli::Streams streams{std::cin, std::cout,  std::cerr,     asks && animates,
                                     animates, ReadSecret, TakePassword()};
  try {
    return StatusWithOutput(
        gorbex::cli::RunCli(arguments, streams, [](const std::optional<std::string>& prefix) {
          return std::make_unique<WindowsHost>(prefix);
        }));
  } catch (const std::exception& error) {
    std::cerr << "gorbex: " << error.what() << '\n';
    return static_cast<int>(gorbex::cli::ExitStatus::Unusable);
  }
}

}  // namespace

int wmain(int count, wchar_t** values) {
  gorbex::SearchTrustedFoldersAlone();
  std::vector<std::string> arguments(static_cast<std::size_t>(count));
  std::transform(values, values + count, arguments.begin(), gorbex::Utf8FromWide);
  std::vector<const char*> pointers(arguments.size());
  std::transform(arguments.begin(), arguments.end(), pointers.begin(),
                 [](const std::string& argument) { return argument.c_str(); });
  const auto answered = gorbex::AnswerAskPass(count, pointers.data(), Environment, std::cout);
  if (answered) return *answered;
  std::ios::sync_with_stdio(false);
  const gorbex::cli::ConsoleStream input(std::cin, STD_INPUT_HANDLE);
  const gorbex::cli::ConsoleStream output(std::cout, STD_OUTPUT_HANDLE);
  const gorbex::cli::ConsoleStream errors(std::cerr, STD_ERROR_HANDLE);
  if (!arguments.empty()) arguments.erase(arguments.begin());
  return Run(arguments);
}
