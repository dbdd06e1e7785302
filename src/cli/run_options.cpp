#include "cli/run_options.h"

#include <algorithm>

#include "build/version_stamp.h"
#include "cli/commands.h"
#include "core/text.h"

namespace gorbex::cli {
namespace {

// Longer numbers fit no project file.
bool IsVersion(const std::string& text) {
  const auto parts = Split(text, '.');
  return parts.size() == 3 && std::all_of(parts.begin(), parts.end(), [](std::string_view part) {
           return !part.empty() && part.size() <= 4 &&
                  part.find_first_not_of("0123456789") == std::string_view::npos;
         });
}

// The compiler needs an existing folder. It is also quoted in the compiler's command line,
// where an impossible name could pose as further arguments.
void RequireBuildFolder(const Program& program) {
  const std::string& folder = program.window.buildDirectory;
  if (folder.empty() || FolderExists(program.platform.files, folder)) return;
  throw Failure(Plain(folder) + ": no such build folder");
}

// The build project may bring one, too.
void RequireVersion(const std::string& version) {
  if (version.empty() || CanBeStamped(version)) return;
  throw Failure(Plain(version) +
                ": a version is written x.x.x, and its numbers written one after the other "
                "must not exceed 2147483647");
}

// By the time the run would miss it, projects have been amended.
std::string RequiredCompiler(Session& session, const std::string& typed) {
  std::string path = session.ProgramPath(typed);
  if (FileExists(session.program().platform.files, path)) return path;
  throw Failure(typed + ": no such compiler");
}

void OverrideTerms(Session& session, const RunOptions& arguments) {
  Program& program = session.program();
  clsOptions& options = program.options;
  if (arguments.debug) options.DebugBuild = "True";
  if (arguments.breakCompat) options.Compatible = false;
  if (arguments.changeRefs) options.ChangeRefs = true;
  if (!arguments.version.empty()) {
    if (!IsVersion(arguments.version)) {
      throw Failure(arguments.version + ": a version is written x.x.x, in numbers up to 9999");
    }
    options.VersionComponents = arguments.version;
  }
  if (arguments.jobs) options.Jobs = *arguments.jobs;
  RequireVersion(options.VersionComponents);
  if (!arguments.buildFolder.empty()) {
    program.window.buildDirectory = BuildFolder(session, arguments.buildFolder);
  }
  RequireBuildFolder(program);
  if (!arguments.compiler.empty()) {
    program.window.compilerPath = RequiredCompiler(session, arguments.compiler);
  }
}

// Named projects are built whether they are queued and marked or not.
void MarkForBuild(Session& session, const RunOptions& arguments) {
  frmBuilder& window = session.program().window;
  if (arguments.all) window.menu.mnuQueueMarkAll.Execute();
  if (arguments.projects.empty()) return;
  window.menu.mnuQueueUnMarkAll.Execute();
  for (const std::string& typed : arguments.projects) {
    const std::string path = session.LoadedProject(typed);
    session.program().queue.Add(path);
    window.lvwQueue.Find(path)->SetChecked(true);
  }
}

}  // namespace

void AddRunOptions(CLI::App& command, RunOptions& options, const std::string& verb) {
  command.add_option("PROJECT.vbp", options.projects,
                     verb + " these projects instead of the checked ones");
  command.add_option("--version", options.version, "Stamp this version (x.x.x)");
  command.add_flag("--debug", options.debug, "Build with debug information");
  command.add_flag("--break-compat", options.breakCompat, "Do not keep compatibility");
  command.add_flag("--change-refs", options.changeRefs,
                   "Repoint references to components rebuilt in this run");
  command.add_option("--build-dir", options.buildFolder, "Build everything into this folder");
  command.add_option("--compiler", options.compiler,
                     "Use this compiler instead of the registered one");
  command
      .add_option("--jobs", options.jobs,
                  "Run up to this many compilers side by side; 0 for as many as processors")
      ->check(CLI::Range(0, kMostJobs));
}

void UseRunOptions(Session& session, const RunOptions& options) {
  OverrideTerms(session, options);
  MarkForBuild(session, options);
}

}  // namespace gorbex::cli
