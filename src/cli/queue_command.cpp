#include <algorithm>
#include <functional>
#include <ostream>
#include <string_view>

#include "cli/commands.h"
#include "cli/json_views.h"
#include "cli/session.h"

namespace gorbex::cli {
namespace {

struct QueueArguments {
  std::string file;
  std::vector<std::string> words;
  bool save = false;
  bool removeMissing = false;
  bool withUses = false;
  bool withUsers = false;
  bool outdated = false;
};

// One word of the queue's little language and what it does to a project.
struct Verb {
  std::string_view name;
  std::function<void(Program&, const std::string& path)> apply;
};

ListRow& RowOf(Program& program, const std::string& path) {
  ListRow* row = program.window.lvwQueue.Find(path);
  if (row == nullptr) throw Failure(Plain(path) + ": not in the queue");
  return *row;
}

std::function<void(Program&, const std::string&)> OnSelected(Command MainMenu::*command) {
  return [command](Program& program, const std::string& path) {
    program.window.lvwQueue.Select(&RowOf(program, path));
    (program.window.menu.*command).Execute();
  };
}

std::function<void(Program&, const std::string&)> SetMark(bool checked) {
  return [checked](Program& program, const std::string& path) {
    RowOf(program, path).SetChecked(checked);
  };
}

const std::vector<Verb>& Verbs() {
  static const std::vector<Verb> kVerbs = {
      {"add", [](Program& program, const std::string& path) { program.queue.Add(path); }},
      {"up", OnSelected(&MainMenu::mnuQueueMoveUp)},
      {"down", OnSelected(&MainMenu::mnuQueueMoveDown)},
      {"remove", OnSelected(&MainMenu::mnuQueueRemove)},
      {"mark", SetMark(true)},
      {"unmark", SetMark(false)}};
  return kVerbs;
}

const Verb* FindVerb(const std::string& word) {
  const auto named = std::ranges::find(Verbs(), word, &Verb::name);
  return named == Verbs().end() ? nullptr : &*named;
}

void RequireMarks(const QueueArguments& arguments) {
  const bool marks = std::ranges::count(arguments.words, "mark") > 0;
  if (marks || (!arguments.withUses && !arguments.withUsers && !arguments.outdated)) return;
  throw Failure("--with-uses, --with-users and --outdated go with mark");
}

// Marks more rows for --with-uses and --with-users.
void MarkMore(QueueMarks& marks, const QueueArguments& arguments, const std::string& path) {
  if (arguments.withUses) marks.MarkWithUses(path);
  if (arguments.withUsers) marks.MarkWithUsers(path);
}

void Execute(Session& session, const QueueArguments& arguments) {
  const Verb* verb = nullptr;
  const Verb* unused = nullptr;
  const auto requireUse = [&] {
    if (unused == nullptr) return;
    throw Failure(std::string(unused->name) + ": no project named");
  };
  for (const std::string& word : arguments.words) {
    if (word == "arrange") {
      requireUse();
      session.program().window.menu.mnuQueueArrange.Execute();
      verb = nullptr;
    } else if (const Verb* named = FindVerb(word)) {
      requireUse();
      verb = unused = named;
      if (arguments.outdated && named->name == "mark") {
        session.program().window.menu.mnuQueueMarkOutdated.Execute();
        unused = nullptr;
      }
    } else if (verb == nullptr) {
      throw Failure(word + ": no queue command");
    } else {
      const std::string path = session.LoadedProject(word);
      verb->apply(session.program(), path);
      if (verb->name == "mark") MarkMore(session.program().marks, arguments, path);
      unused = nullptr;
    }
  }
  requireUse();
}

void Queue(Frame& frame, const QueueArguments& arguments) {
  RequireMarks(arguments);
  Session session(frame);
  const auto alone = arguments.save ? session.ChangeAlone() : nullptr;
  arguments.removeMissing ? session.OpenWithoutMissing(arguments.file)
                          : session.Open(arguments.file);
  Execute(session, arguments);
  if (arguments.save) session.Save();
  const ListView& queue = session.program().window.lvwQueue;
  if (frame.json) return PrintJson(frame, QueueJson(queue));
  PrintQueue(frame.streams.out, queue);
  if (!arguments.outdated) return;
  frame.streams.out << Plain(session.program().window.stbStatus.Get()) << '\n';
}

}  // namespace

void AddQueueCommand(CLI::App& app, Frame& frame) {
  CLI::App& command = AddJsonCommand(app, frame, "queue", "Show and change the build queue");
  auto arguments = std::make_shared<QueueArguments>();
  command.add_option("FILE.bpf", arguments->file, "Build project file")->required();
  command.add_option("COMMAND", arguments->words,
                     "add P.vbp..., arrange, up P.vbp, down P.vbp, remove P.vbp, mark P.vbp..., "
                     "unmark P.vbp...");
  command.add_flag("--with-uses", arguments->withUses,
                   "Mark what the named projects use, too, directly or through others");
  command.add_flag("--with-users", arguments->withUsers,
                   "Mark what uses the named projects, too, directly or through others");
  command.add_flag("--outdated", arguments->outdated,
                   "Mark the projects that are out of date, and no others");
  command.add_flag("--remove-missing", arguments->removeMissing,
                   "Take projects out whose files are missing");
  command.add_flag("--save", arguments->save, "Write the file");
  AddAnswers(command, frame);
  command.callback([&frame, arguments] { Queue(frame, *arguments); });
}

}  // namespace gorbex::cli
