#include "platform/linux/process.h"

#include <fcntl.h>
#include <unistd.h>

#include <array>
#include <filesystem>
#include <iterator>
#include <map>
#include <system_error>
#include <utility>

#include "platform/code_page.h"
#include "platform/command_line.h"
#include "platform/linux/child_process.h"
#include "platform/linux/host_file.h"
#include "platform/linux/wine.h"

namespace gorbex {
namespace {

constexpr const char* kSystemFolder = "C:\\windows\\system32";

/// A tool that ran inside this program.
class EndedProcess : public Process {
 public:
  explicit EndedProcess(std::uint32_t exitCode) : exitCode_(exitCode) {}
  [[nodiscard]] std::optional<std::uint32_t> ExitCode(
      std::chrono::milliseconds /*patience*/) override {
    return exitCode_;
  }
  void Terminate() override {}

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
                                           OnEnded onEnded, RegSvr32 regSvr32)
    : prefix_(prefix),
      programFolder_(std::move(programFolder)),
      onEnded_(std::move(onEnded)),
      regSvr32_(std::move(regSvr32)) {}

std::optional<LinuxProcessLauncher::Program> LinuxProcessLauncher::Locate(
    const std::string& name) const {
  std::vector<std::string> places = {name};
  const bool isBare = name.find_first_of("\\/:") == std::string::npos;
  if (isBare) places = {std::string(kSystemFolder) + "\\" + name, programFolder_ + "\\" + name};
  for (const auto& place : places) {
    const auto entry = prefix_.Find(place);
    if (entry && S_ISREG(entry->info.st_mode)) return Program{entry->path, place};
  }
  const auto onHost = isBare ? FindOnHost(ToUtf8(name)) : std::nullopt;
  if (!onHost) return std::nullopt;
  return Program{*onHost, {}};
}

std::vector<std::string> LinuxProcessLauncher::Arguments(const Program& program,
                                                         std::vector<std::string> arguments) const {
  std::vector<std::string> all = {program.hostPath};
  if (IsWindowsProgram(program.hostPath)) {
    const auto wine = FindWine();
    const auto& name = program.windowsPath.empty() ? program.hostPath : program.windowsPath;
    if (!wine) throw NotFound("File not found: 'wine', which is needed to run '" + name + "'");
    // Wine knows only the drives of its own prefix.
    const bool isKnown = prefix_.IsWine() && !program.windowsPath.empty();
    all = {*wine, isKnown ? ToUtf8(program.windowsPath) : program.hostPath};
  }
  std::move(arguments.begin(), arguments.end(), std::back_inserter(all));
  return all;
}

std::vector<std::string> LinuxProcessLauncher::ChildEnvironment() const {
  std::map<std::string, std::optional<std::string>> changes;
  changes["GORBEX_PREFIX"] = prefix_.Root().native();
  if (prefix_.IsWine()) changes["WINEPREFIX"] = prefix_.Root().native();
  return EnvironmentWith(changes);
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
  std::vector<std::string> arguments;
  for (const auto& argument : SplitFolderArguments(found->arguments)) {
    arguments.push_back(ToUtf8(argument));
  }
  return Start(*program, found->program, std::move(arguments));
}

StartResult LinuxProcessLauncher::StartProgram(const std::string& program,
                                               const std::vector<std::string>& arguments) {
  auto found = Locate(program);
  // One that may not be executed is found, too: the attempt tells the reason.
  const std::string onHost = ToUtf8(program);
  std::error_code ignored;
  if (onHost.starts_with('/') && std::filesystem::is_regular_file(onHost, ignored)) {
    found = {onHost, {}};
  }
  if (!found) return RuntimeError(ErrorNumber::FileNotFound, program);
  return Start(*found, program, arguments);
}

StartResult LinuxProcessLauncher::Start(const Program& program, const std::string& name,
                                        std::vector<std::string> arguments) const {
  try {
    ChildStart start{Arguments(program, std::move(arguments)), ChildEnvironment()};
    // On a terminal their words would break the rows of a run's progress.
    if (isatty(STDERR_FILENO) == 1) start.output = start.errorOutput = -1;
    const bool underWine = start.arguments.front() != program.hostPath;
    return std::make_unique<ChildProcess>(start,
                                          [ended = onEnded_, underWine] { ended(underWine); });
  } catch (const std::system_error& error) {
    return RuntimeError::WithReason(ErrorNumber::InvalidCall, name, error.code().message());
  } catch (const RuntimeError& error) {
    return error;
  }
}

}  // namespace gorbex
