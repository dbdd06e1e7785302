#include <memory>
#include <ostream>
#include <string>

#include "cli/commands.h"
#include "cli/completion.h"

namespace gorbex::cli {

void AddCompletionCommand(CLI::App& app, Frame& frame) {
  CLI::App& command = *app.add_subcommand(
      "completion", "Print a script that completes this command line in a shell");
  auto shell = std::make_shared<std::string>();
  command.add_option("SHELL", *shell, "bash or zsh")
      ->required()
      ->check(CLI::IsMember({"bash", "zsh"}));
  command.callback([&app, &frame, shell] {
    frame.streams.out << (*shell == "zsh" ? ZshCompletion(app) : BashCompletion(app));
  });
}

}  // namespace gorbex::cli
