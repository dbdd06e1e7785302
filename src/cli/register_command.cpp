#include "cli/commands.h"
#include "cli/json_views.h"
#include "cli/session.h"

namespace gorbex::cli {
namespace {

enum class Direction { Register, Unregister };

void Register(Frame& frame, const std::string& typed, Direction direction) {
  Session session(frame);
  Program& program = session.program();
  const std::string path = session.ProgramPath(typed);
  if (!FileExists(program.platform.files, path)) throw Failure(typed + ": no such file");
  const bool done = direction == Direction::Register ? program.registration.Register(path)
                                                     : program.registration.Unregister(path);
  if (frame.json) PrintJson(frame, {{"file", JsonText(path)}, {"done", done}});
  if (done) return;
  session.Warn("Failed to Register " + Plain(path));
  if (const auto& advice = program.registration.Advice(); !advice.empty()) session.Warn(advice);
  frame.status = ExitStatus::WorkFailed;
}

void Add(CLI::App& app, Frame& frame, const char* name, const char* description,
         Direction direction) {
  CLI::App& command = AddJsonCommand(app, frame, name, description);
  auto file = std::make_shared<std::string>();
  command.add_option("FILE", *file, "Component file")->required();
  command.callback([&frame, file, direction] { Register(frame, *file, direction); });
}

}  // namespace

void AddRegisterCommands(CLI::App& app, Frame& frame) {
  Add(app, frame, "register", "Register one component", Direction::Register);
  Add(app, frame, "unregister", "Unregister one component", Direction::Unregister);
}

}  // namespace gorbex::cli
