#include "cli/output_option.h"

#include <set>

#include "core/source_name.h"
#include "platform/code_page.h"
#include "platform/windows_path.h"

namespace gorbex::cli {

void AddOutput(CLI::App& command, const std::string& name, std::string& file,
               const std::string& description) {
  command.add_option(name, file, description)->check([](const std::string& typed) {
    if (typed.empty()) return std::string("the name of the file is empty");
    return IsOutputName(typed)
               ? std::string()
               : typed + " is a project, a source or a component; it is not replaced";
  });
}

// Letter case tells no files apart: the program looks for a file without regard to it.
void RequireOwnFiles(const Session& session, const std::vector<std::string>& typed) {
  std::set<std::string> files;
  for (const std::string& each : typed) {
    if (each.empty()) continue;
    if (files.insert(LowerCase(ResolvedPath("", session.ProgramPath(each)))).second) continue;
    throw Failure(each + ": two options name this file; the one output would replace the other");
  }
}

}  // namespace gorbex::cli
