#include <cstdlib>
#include <exception>
#include <iostream>
#include <stdexcept>
#include <string>
#include <variant>
#include <vector>

#include "compiler/command_line.h"
#include "compiler/host.h"
#include "compiler/identity.h"
#include "compiler/make.h"
#include "compiler/registration.h"
#include "compiler/result_log.h"
#include "platform/code_page.h"
#include "platform/event_pump.h"
#include "platform/runtime_error.h"
#include "platform/windows_path.h"

namespace gorbex::standin {
namespace {

constexpr int kDone = 0;
constexpr int kFailed = 1;
constexpr int kWrongUsage = 2;

// With the variable set, equal builds give equal files also where identities are new.
Foundation FoundationOf() {
  const char* const seed = std::getenv("STANDIN_COMPILER_SEED");
  return {Image(ImageKind::Program), Image(ImageKind::Library),
          NewIdentities(seed != nullptr ? seed : "")};
}

int RunMake(const Host& host, PlatformServices services, const CommandLine& line) {
  const auto folder = host.TypedPath(".");
  const auto outputFolder =
      line.outputFolder.empty() ? std::string() : ResolvedPath(folder, line.outputFolder);
  const auto result = Make(services.files, services.registry, ResolvedPath(folder, line.project),
                           outputFolder, FoundationOf());
  AppendResult(services.files, ResolvedPath(folder, line.resultLog), result.lines);
  return result.built ? kDone : kFailed;
}

int RunInstall(const Host& host, PlatformServices services) {
  if (Install(services.files, services.registry, host.TypedPath(OwnProgram()))) return kDone;
  std::cerr << "The registry refuses the compiler's entry\n";
  return kFailed;
}

int Perform(const CommandLine& line) {
  const auto host = MakeHost();
  EventPump events;
  const auto services = host->Services(events);
  if (line.task == Task::Make) return RunMake(*host, services, line);
  if (line.task == Task::Install) return RunInstall(*host, services);
  const auto project = ResolvedPath(host->TypedPath("."), line.project);
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
    return gorbex::standin::Main(gorbex::standin::Arguments(argc, argv));
  } catch (const gorbex::RuntimeError& error) {
    std::cerr << gorbex::ToUtf8(error.Description()) << '\n';
  } catch (const std::exception& error) {
    std::cerr << error.what() << '\n';
  }
  return gorbex::standin::kWrongUsage;
}
