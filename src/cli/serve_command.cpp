#include <ostream>

#include "cli/commands.h"
#include "cli/session.h"
#include "cli/source_control_options.h"
#include "cli/text_output.h"
#include "cli/time_limit.h"

namespace gorbex::cli {
namespace {

struct ServeArguments {
  std::optional<std::string> file;
  SourceControlOptions sourceControl;
  bool once = false;
  std::int32_t interval = 0;  ///< seconds; 0 for the stored setting
  int timeLimit = 0;          ///< seconds; 0 for none
};

void SetInterval(Program& program, const ServeArguments& arguments) {
  clsOptions& options = program.options;
  if (arguments.interval > 0) options.Interval = arguments.interval;
  options.LimitInterval();
  if (arguments.once || options.Interval > 0) return;
  throw Failure("the setting Interval is " + std::to_string(options.Interval) +
                " seconds, and such a timer never fires: name another with --interval or "
                "`gorbex settings Interval`");
}

void Start(Program& program) {
  Command& entry = program.window.menu.mnuToolsInBox;
  entry.Execute();
  if (!entry.checked.Get()) throw Failure("the mail system cannot be used");
}

// One look into the request folder, as the window's timer takes it.
void Tick(Session& session) {
  Program& program = session.program();
  const auto alone = session.BuildAlone();
  if (session.host().EndWanted()) return;
  program.window.tmrOutlook.elapsed.Emit();
  if (program.window.tmrOutlook.enabled.Get()) return;
  throw Failure("the service switched itself off after an error", ExitStatus::WorkFailed);
}

void Serve(Frame& frame, const ServeArguments& arguments) {
  Session session(frame);
  Program& program = session.program();
  UseSourceControl(session, arguments.sourceControl);
  if (!arguments.file) {
    session.Warn("no build project is open: nothing can be got or built");
  } else {
    session.Open(*arguments.file);
  }
  SetInterval(program, arguments);
  const auto listening = program.log.written.Connect([&](const std::string& line) {
    frame.streams.out << Plain(line) << '\n' << std::flush;
  });
  Host& host = session.host();
  host.ListenForEnd();
  TimeLimit limit(session, std::chrono::seconds(arguments.timeLimit));
  session.onIdle = [&] {
    limit.Tick();
    if (host.EndWanted()) program.work.StopAfterThis();
    session.EndStepOnRequest();
  };
  Start(program);
  Tick(session);
  if (arguments.once && program.mail.MailboxIsAway()) {
    throw Failure("the mailbox went away before all requests were served", ExitStatus::WorkFailed);
  }
  while (!arguments.once && !host.EndWanted()) {
    host.Wait(std::chrono::milliseconds(program.window.tmrOutlook.interval.Get()));
    if (!host.EndWanted()) Tick(session);
  }
}

}  // namespace

void AddServeCommand(CLI::App& app, Frame& frame) {
  CLI::App& command = *app.add_subcommand("serve", "Build on request by mail, until told to end");
  auto arguments = std::make_shared<ServeArguments>();
  command.add_option("FILE.bpf", arguments->file, "The build project whose projects are served");
  command.add_flag("--once", arguments->once, "Look for requests once, then end");
  command.add_option("--interval", arguments->interval, "Seconds between two looks, at most 60")
      ->check(CLI::Range(1, 60));
  AddSourceControlOptions(command, arguments->sourceControl);
  AddTimeLimit(command, arguments->timeLimit);
  AddAnswers(command, frame);
  command.callback([&frame, arguments] { Serve(frame, *arguments); });
}

}  // namespace gorbex::cli
