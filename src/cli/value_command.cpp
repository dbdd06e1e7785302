#include <ostream>

#include "build/project_value.h"
#include "cli/commands.h"
#include "cli/json_views.h"
#include "cli/session.h"
#include "core/text.h"
#include "platform/code_page.h"

namespace gorbex::cli {
namespace {

struct ValueArguments {
  std::string file;
  std::string key;
  std::string value;
};

// The readers of values pass over files they cannot open, so that is told here, before.
bool HasKey(Session& session, const ValueArguments& arguments, const std::string& path,
            const std::string& key) {
  const auto& files = session.program().platform.files;
  return OrFail(arguments.file,
                [&] { return FindProjectValue(files.Read(path), key).has_value(); });
}

std::string KeyOf(const ValueArguments& arguments) {
  const auto key = FromUtf8(arguments.key);
  if (key && !key->empty()) return *key;
  throw Failure("the key is empty or holds a character no key can hold");
}

// As it is, line ends included, without characters that could control a terminal.
std::string Shown(const std::string& value) {
  std::string shown;
  for (const auto part : Split(value, '\r')) shown.append(Plain(part)).append("\r");
  if (!shown.empty()) shown.pop_back();
  return shown;
}

void Get(Frame& frame, const ValueArguments& arguments) {
  Session session(frame);
  const std::string path = session.ProgramPath(arguments.file);
  const std::string key = KeyOf(arguments);
  const bool found = HasKey(session, arguments, path, key);
  if (!found) {
    session.Warn(arguments.file + ": no key " + arguments.key + "; this is the whole file");
  }
  const auto value = session.program().values.ReadProjectValue(path, key);
  if (!frame.json) {
    frame.streams.out << Shown(value) << '\n';
    return;
  }
  PrintJson(frame, {{"key", arguments.key}, {"value", JsonText(value)}, {"found", found}});
}

void Set(Frame& frame, const ValueArguments& arguments) {
  Session session(frame);
  const std::string path = session.ProgramPath(arguments.file);
  const auto value = FromUtf8(arguments.value);
  if (!value || value->find_first_of("\r\n") != std::string::npos) {
    throw Failure("the value holds a character that no project file can hold");
  }
  const std::string key = KeyOf(arguments);
  // A build changes project files too, and changes some of them back.
  const auto alone = session.BuildAlone();
  const bool hasKey = HasKey(session, arguments, path, key);
  bool written = true;
  const Subscription failed = session.program().values.failed.Connect(
      [&](const std::string&, const RuntimeError&) { written = false; });
  session.program().values.WriteProjectValue(path, key, *value);
  if (!hasKey) session.Warn(arguments.file + ": no key " + arguments.key + "; nothing was set");
  const bool set = hasKey && written;
  if (!set) frame.status = ExitStatus::WorkFailed;
  if (!frame.json) return;
  PrintJson(frame, {{"key", arguments.key}, {"value", JsonText(*value)}, {"set", set}});
}

}  // namespace

void AddValueCommand(CLI::App& app, Frame& frame) {
  CLI::App& command = *app.add_subcommand("value", "Read or replace one value of a project file");
  command.require_subcommand(1);
  auto arguments = std::make_shared<ValueArguments>();
  CLI::App& get = AddJsonCommand(command, frame, "get", "Print the value of a key");
  CLI::App& set = AddJsonCommand(command, frame, "set", "Replace the value of a key");
  for (CLI::App* each : {&get, &set}) {
    each->add_option("FILE.vbp", arguments->file, "Project file")->required();
    each->add_option("KEY", arguments->key, "Such as MajorVer")->required();
  }
  set.add_option("VALUE", arguments->value, "Written as it is, quotes included")->required();
  get.callback([&frame, arguments] { Get(frame, *arguments); });
  set.callback([&frame, arguments] { Set(frame, *arguments); });
}

}  // namespace gorbex::cli
