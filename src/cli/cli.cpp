#include "cli/cli.h"

#include <algorithm>
#include <ostream>

#include "cli/command_guard.h"
#include "cli/commands.h"
#include "cli/examples.h"
#include "platform/runtime_error.h"

namespace gorbex::cli {
namespace {

int Status(ExitStatus status) {
  return static_cast<int>(status);
}

void AddCommands(CLI::App& app, Frame& frame) {
  AddBuildCommand(app, frame);
  AddCheckCommand(app, frame);
  AddShowCommand(app, frame);
  AddReferencesCommand(app, frame);
  AddQueueCommand(app, frame);
  AddPlanCommand(app, frame);
  AddGraphCommand(app, frame);
  AddMissingCommand(app, frame);
  AddPipelineCommand(app, frame);
  AddInitCommand(app, frame);
  AddValueCommand(app, frame);
  AddRegisterCommands(app, frame);
  AddSettingsCommand(app, frame);
  AddLogCommand(app, frame);
  AddSourceControlCommands(app, frame);
  AddServeCommand(app, frame);
  AddCompletionCommand(app, frame);
  AddExamples(app);
}

int Parse(CLI::App& app, std::vector<std::string> arguments, const Frame& frame) {
  const Streams& streams = frame.streams;
  try {
    std::reverse(arguments.begin(), arguments.end());
    app.parse(std::move(arguments));
    return Status(frame.status);
  } catch (const CLI::ParseError& error) {
    const int code = app.exit(error, streams.out, streams.err);
    return code == 0 ? 0 : Status(ExitStatus::Unusable);
  } catch (const Failure& failure) {
    streams.err << "gorbex: " << failure.what() << '\n';
    return Status(failure.Status());
  } catch (const RuntimeError& error) {
    streams.err << "gorbex: " << Plain(error.Description()) << '\n';
  } catch (const std::exception& error) {
    streams.err << "gorbex: " << error.what() << '\n';
  }
  return Status(ExitStatus::Unusable);
}

// As a user would type it. Passwords are never arguments.
std::string CommandLine(const std::vector<std::string>& arguments) {
  std::string line = "gorbex";
  for (const std::string& argument : arguments) {
    const bool isPlain = !argument.empty() && argument.find_first_of(" \t\"'") == std::string::npos;
    line.append(" ").append(isPlain ? argument : "\"" + argument + "\"");
  }
  return line;
}

int RunInFrame(const std::vector<std::string>& arguments, Frame& frame) {
  frame.commandLine = CommandLine(arguments);
  CLI::App app("GorbexBuilder builds groups of Visual Basic component projects.", "gorbex");
  // A path of the host may begin with "/"; all systems are to read it alike.
  app.allow_windows_style_options(false);
  app.set_version_flag("--version", "gorbex " GORBEX_VERSION);
  app.add_option(
         "--prefix", frame.prefix,
         "The folder that serves as a Windows installation (also GORBEX_PREFIX, WINEPREFIX)")
      ->check(
          [](const std::string& typed) { return std::string(typed.empty() ? "is empty" : ""); });
  app.require_subcommand(1);
  app.fallthrough();
  AddCommands(app, frame);
  return Parse(app, arguments, frame);
}

}  // namespace

CLI::App& AddJsonCommand(CLI::App& app, Frame& frame, const std::string& name,
                         const std::string& description) {
  CLI::App& command = *app.add_subcommand(name, description);
  command.add_flag("--json", frame.json, "Machine-readable output (UTF-8)");
  return command;
}

void AddAnswers(CLI::App& command, Frame& frame) {
  auto* yes = command.add_flag("-y,--yes", frame.yes, "Answer every question with Yes or OK");
  command.add_flag("-n,--no", frame.no, "Answer every question with No or Cancel")->excludes(yes);
}

int RunCli(const std::vector<std::string>& arguments, const Streams& streams,
           const HostFactory& makeHost) {
  if (streams.ci == CiSystem::None) {
    Frame frame{streams, makeHost};
    return RunInFrame(arguments, frame);
  }
  CommandGuard out(streams.out);
  CommandGuard err(streams.err);
  Streams guarded{streams.in, out, err};
  guarded.asks = streams.asks;
  guarded.animates = streams.animates;
  guarded.readSecret = streams.readSecret;
  guarded.password = streams.password;
  guarded.awaitInput = streams.awaitInput;
  guarded.ci = streams.ci;
  guarded.commandOut = &streams.out;
  guarded.commandErr = &streams.err;
  Frame frame{guarded, makeHost};
  out.FollowJson(frame.json);
  return RunInFrame(arguments, frame);
}

}  // namespace gorbex::cli
