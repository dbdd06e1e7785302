#include <cstdlib>
#include <exception>
#include <filesystem>
#include <iostream>
#include <optional>
#include <stdexcept>
#include <string>
#include <variant>
#include <vector>

#include "compiler/command_line.h"
#include "compiler/identity.h"
#include "compiler/make.h"
#include "compiler/registration.h"
#include "compiler/result_log.h"
#include "compiler/windows_path.h"
#include "platform/code_page.h"
#include "platform/event_pump.h"
#include "platform/linux/platform.h"
#include "platform/runtime_error.h"

namespace gorbex::standin {
namespace {

constexpr int kDone = 0;
constexpr int kFailed = 1;
constexpr int kWrongUsage = 2;

class NoEvents : public EventPump {
 public:
  void DoEvents() override {}
};

std::optional<std::string> EnvironmentValue(const char* name) {
  const char* const value = std::getenv(name);
  if (value == nullptr) return std::nullopt;
  return value;
}

std::string CurrentFolder(const Prefix& prefix) {
  return prefix.WindowsPath(std::filesystem::current_path());
}

int RunMake(const LinuxPlatform& platform, PlatformServices services, const CommandLine& line) {
  const auto folder = CurrentFolder(platform.GetPrefix());
  const auto outputFolder =
      line.outputFolder.empty() ? std::string() : Absolute(line.outputFolder, folder);
  const auto result =
      Make(services.files, services.registry, Absolute(line.project, folder), outputFolder);
  AppendResult(services.files, Absolute(line.resultLog, folder), result.lines);
  return result.built ? kDone : kFailed;
}

int RunInstall(const LinuxPlatform& platform, PlatformServices services) {
  const auto program =
      platform.GetPrefix().WindowsPath(std::filesystem::read_symlink("/proc/self/exe"));
  if (Install(services.files, services.registry, program)) return kDone;
  std::cerr << "The registry refuses the compiler's entry\n";
  return kFailed;
}

int Perform(const CommandLine& line) {
  if (line.task == Task::ShowIdentity) {
    std::cout << FirstIdentity(line.name) << '\n';
    return kDone;
  }
  LinuxPlatform platform(Prefix::Choose(std::nullopt, EnvironmentValue));
  NoEvents events;
  const auto services = platform.Services(events);
  if (line.task == Task::Make) return RunMake(platform, services, line);
  if (line.task == Task::Install) return RunInstall(platform, services);
  const auto project = Absolute(line.project, CurrentFolder(platform.GetPrefix()));
  std::cout << "Would run the program of '" << ToUtf8(project) << "'\n";
  return kDone;
}

int Main(const std::vector<std::string>& utf8) {
  std::vector<std::string> arguments;
  for (const auto& argument : utf8) {
    const auto text = FromUtf8(argument);
    if (!text) throw std::runtime_error("Not a text of the code page: " + argument);
    arguments.push_back(*text);
  }
  const auto parsed = ParseCommandLine(arguments);
  if (const auto* error = std::get_if<UsageError>(&parsed)) {
    throw std::runtime_error(ToUtf8(error->message));
  }
  return Perform(std::get<CommandLine>(parsed));
}

}  // namespace
}  // namespace gorbex::standin

int main(int argc, char** argv) {
  try {
    return gorbex::standin::Main({argv + (argc > 0 ? 1 : 0), argv + argc});
  } catch (const gorbex::RuntimeError& error) {
    std::cerr << gorbex::ToUtf8(error.Description()) << '\n';
  } catch (const std::exception& error) {
    std::cerr << error.what() << '\n';
  }
  return gorbex::standin::kWrongUsage;
}
