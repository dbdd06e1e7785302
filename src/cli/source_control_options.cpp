#include "cli/source_control_options.h"

#include "platform/code_page.h"

namespace gorbex::cli {

void AddSourceControlOptions(CLI::App& command, SourceControlOptions& options) {
  command.add_option("--ini", options.ini,
                     "The database's initialisation file, instead of the stored one");
  command.add_option("--user", options.user,
                     "The user to log in; the password is asked for, or taken from "
                     "GORBEX_SCC_PASSWORD");
}

void UseSourceControl(Session& session, const SourceControlOptions& options) {
  Program& program = session.program();
  if (options.user) program.window.UserName = InCodePage(*options.user);
  if (options.ini.empty()) return;
  const std::string path = session.ProgramPath(options.ini);
  if (!FileExists(program.platform.files, path)) {
    throw Failure(options.ini + ": no such initialisation file");
  }
  program.window.IniPath = path;
}

void RequireInitialisationFile(Session& session) {
  Program& program = session.program();
  if (program.window.IniPath.empty()) program.session.LoginToSourceSafe();
  if (!program.window.IniPath.empty()) return;
  throw Failure(
      "no initialisation file is known: name one with --ini, or with `gorbex settings "
      "INIPath FILE`");
}

std::string InCodePage(const std::string& utf8) {
  const auto text = FromUtf8(utf8);
  if (!text) throw Failure(utf8 + ": not every character can be used");
  return *text;
}

}  // namespace gorbex::cli
