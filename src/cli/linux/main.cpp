#include <unistd.h>

#include <cstdlib>
#include <filesystem>
#include <iostream>

#include "cli/cli.h"
#include "platform/code_page.h"
#include "platform/linux/platform.h"
#include "platform/runtime_error.h"

namespace {

std::optional<std::string> Environment(const char* name) {
  const char* value = std::getenv(name);
  return value == nullptr || *value == '\0' ? std::nullopt : std::optional<std::string>(value);
}

bool IsWindowsPath(const std::string& typed) {
  return typed.starts_with("\\\\") || (typed.size() > 2 && typed[1] == ':' && typed[2] == '\\');
}

class LinuxHost : public gorbex::cli::Host {
 public:
  explicit LinuxHost(const std::optional<std::string>& prefix)
      : platform_(gorbex::Prefix::Choose(prefix, Environment)) {}

  gorbex::PlatformServices Services(gorbex::EventPump& events) override {
    return platform_.Services(events);
  }

  [[nodiscard]] std::string ProgramPath(const std::string& typed) const override {
    if (!IsWindowsPath(typed)) return platform_.GetPrefix().WindowsPath(typed);
    const auto path = gorbex::FromUtf8(typed);
    if (!path) throw gorbex::RuntimeError(gorbex::ErrorNumber::BadFileName);
    return *path;
  }

 private:
  gorbex::LinuxPlatform platform_;
};

}  // namespace

int main(int count, char** values) {
  std::ios::sync_with_stdio(false);
  const gorbex::cli::Streams streams{std::cin, std::cout, std::cerr,
                                     isatty(STDIN_FILENO) != 0 && isatty(STDERR_FILENO) != 0,
                                     isatty(STDERR_FILENO) != 0};
  try {
    return gorbex::cli::RunCli(std::vector<std::string>(values + 1, values + count), streams,
                               [](const std::optional<std::string>& prefix) {
                                 return std::make_unique<LinuxHost>(prefix);
                               });
  } catch (const std::exception& error) {
    std::cerr << "gorbex: " << error.what() << '\n';
    return static_cast<int>(gorbex::cli::ExitStatus::Unusable);
  }
}
