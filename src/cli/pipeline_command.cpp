#include <algorithm>
#include <ostream>
#include <set>

#include "build/run_uses.h"
#include "cli/commands.h"
#include "cli/gitlab_pipeline.h"
#include "cli/junit_report.h"
#include "cli/output_option.h"
#include "cli/run_json.h"
#include "cli/session.h"
#include "cli/shown_paths.h"
#include "core/file_tools.h"
#include "core/text.h"
#include "freshness/project_sources.h"
#include "platform/code_page.h"

namespace gorbex::cli {
namespace {

struct PipelineArguments {
  std::string file;
  bool gitlab = false;
  std::string output;
  std::vector<std::string> tags;
  std::string image;
  std::string before;
  bool join = false;
  std::string script;
  std::string junit;
};

/// Where a pipeline finds files: in the program's form, and in the repository.
class Places {
 public:
  explicit Places(const Session& session, const PipelineArguments& arguments)
      : root_(StripPath(session.ProgramPath(arguments.file)) + "\\") {
    const auto end = arguments.file.find_last_of("/\\");
    const bool isAbsolute = arguments.file.starts_with('/') || arguments.file.find(':') == 1;
    if (end != std::string::npos && !isAbsolute) {
      folder_ = WithSlashes(arguments.file.substr(0, end + 1));
    }
  }

  /// UTF-8; Failure for a path that the commands of a pipeline cannot name.
  [[nodiscard]] static std::string InCommand(const std::string& path) {
    if (path.find('\'') == std::string::npos) return ToUtf8(path);
    throw Failure(Plain(path) + ": a path in a pipeline must not hold the character '");
  }

  /// Failure for a file that is outside the build project's folder.
  [[nodiscard]] std::string InRepository(const std::string& path) const {
    if (!EqualsIgnoringCase(path.substr(0, root_.size()), root_)) {
      throw Failure(Plain(path) +
                    ": not below the folder of the build project, so that no job could pass it on");
    }
    return folder_ + WithSlashes(ToUtf8(path.substr(root_.size())));
  }

  [[nodiscard]] const std::string& Root() const { return root_; }
  [[nodiscard]] const std::string& Folder() const { return folder_; }

 private:
  std::string root_;    ///< the build project's folder, with "\"
  std::string folder_;  ///< the same in the repository: empty, or with "/"
};

// The file name of each project without its extension, numbered where others have the same.
std::vector<std::string> JobNames(const std::vector<std::string>& paths) {
  std::set<std::string> used;
  std::vector<std::string> names;
  for (const std::string& path : paths) {
    const std::string stem = GetFileFromPath(path).substr(0, GetFileFromPath(path).rfind('.'));
    std::string name = stem;
    for (int number = 2; !used.insert(LowerCase(name)).second; ++number) {
      name = stem + "-" + std::to_string(number);
    }
    names.push_back(name);
  }
  return names;
}

std::string ResultFile(const Places& places, const std::string& name) {
  return places.Root() + name + ".result.json";
}

// A component of a component has to be registered as well.
std::vector<std::size_t> WithIndirect(std::size_t project,
                                      const std::vector<std::vector<std::size_t>>& uses) {
  std::set<std::size_t> all;
  std::vector<std::size_t> open = uses[project];
  while (!open.empty()) {
    const std::size_t used = open.back();
    open.pop_back();
    if (all.insert(used).second) open.insert(open.end(), uses[used].begin(), uses[used].end());
  }
  return {all.begin(), all.end()};
}

std::vector<PipelineJob> Jobs(Program& program, const Places& places) {
  const std::vector<std::string> paths = CheckedProjects(program.window.lvwQueue);
  const auto names = JobNames(paths);
  const MemberCollection& members = program.window.ProjectMembers;
  const auto uses = WithoutCircles(UsesInRun(members, program.group, paths));
  std::vector<PipelineJob> jobs;
  for (std::size_t i = 0; i < paths.size(); ++i) {
    const std::string binary = BuiltFile(members.Item(paths[i]), program.window.buildDirectory);
    const std::string result = ResultFile(places, names[i]);
    jobs.push_back({"build " + ToUtf8(names[i]), Places::InCommand(paths[i]),
                    Places::InCommand(binary), places.InRepository(binary),
                    Places::InCommand(result), places.InRepository(result), WithIndirect(i, uses)});
  }
  return jobs;
}

std::vector<std::string> LinesOf(Session& session, const std::string& typed) {
  if (typed.empty()) return {};
  const std::string path = session.ProgramPath(typed);
  const auto text = OrFail(typed, [&] { return session.program().platform.files.Read(path); });
  std::vector<std::string> lines;
  for (std::string_view line : Split(text, '\n')) {
    if (line.ends_with('\r')) line.remove_suffix(1);
    if (!line.empty()) lines.emplace_back(line);  // UTF-8 already, as the pipeline is
  }
  return lines;
}

void WritePipeline(Frame& frame, Session& session, const PipelineArguments& arguments) {
  constexpr std::size_t kMostNeeds = 50;
  const Places places(session, arguments);
  const std::string file = Places::InCommand(session.ProgramPath(arguments.file));
  const GitLabPipeline pipeline{file,
                                places.Folder(),
                                Jobs(session.program(), places),
                                LinesOf(session, arguments.before),
                                arguments.tags,
                                arguments.image};
  if (pipeline.jobs.empty()) {
    frame.status = ExitStatus::NothingChecked;
    session.Warn("no project of the queue is checked");
    return;
  }
  const auto longest = std::ranges::max_element(
      pipeline.jobs, {}, [](const PipelineJob& job) { return job.needs.size(); });
  if (longest->needs.size() > kMostNeeds) {
    session.Warn(longest->name + " needs " + std::to_string(longest->needs.size()) +
                 " other jobs; GitLab allows 50 unless its administrator raises that limit");
  }
  if (arguments.output.empty()) {
    frame.streams.out << pipeline.Text();
  } else {
    session.Write(arguments.output, pipeline.Text());
  }
}

// Writes the results of a pipeline's jobs as one run would have reported them.
void JoinResults(Frame& frame, Session& session, const PipelineArguments& arguments) {
  Program& program = session.program();
  const Places places(session, arguments);
  const std::vector<std::string> paths = CheckedProjects(program.window.lvwQueue);
  const auto names = JobNames(paths);
  RunRecord record(paths);
  for (const std::string& name : names) {
    const std::string file = ResultFile(places, name);
    if (!FileExists(program.platform.files, file)) continue;
    if (!TakeRunJson(record, program.platform.files.Read(file))) {
      session.Warn(Plain(file) + ": not the result of a build; its project counts as not built");
    }
  }
  RunEnded ended{RunResult::Finished, 0, 0, {}};
  program.script.Begin();
  for (const auto& project : record.Projects()) {
    using Outcome = RunRecord::Outcome;
    if (project.outcome == Outcome::NotBuilt) continue;
    ended.duration += project.duration;
    ended.built += project.outcome == Outcome::Built ? 1 : 0;
    ended.errors += project.outcome == Outcome::Failed ? 1 : 0;
    ended.upToDate += project.outcome == Outcome::UpToDate ? 1 : 0;
    if (project.outcome == Outcome::Failed) continue;
    program.script.AddComponent(program.window.buildDirectory,
                                program.window.ProjectMembers.Item(project.path).EXEName);
  }
  program.script.End();
  record.On(ended);
  if (!arguments.script.empty()) program.script.Save(session.ProgramPath(arguments.script));
  if (!arguments.junit.empty()) {
    session.Write(arguments.junit, JUnitReport(record, program.window.fileName));
  }
  frame.streams.out << CountsText(ended, paths.size()) << '\n';
  const auto done =
      static_cast<std::size_t>(ended.built) + static_cast<std::size_t>(ended.upToDate);
  frame.status = done == paths.size() ? ExitStatus::Done : ExitStatus::WorkFailed;
}

void Pipeline(Frame& frame, const PipelineArguments& arguments) {
  if (arguments.gitlab == arguments.join) throw Failure("pipeline wants either --gitlab or --join");
  Session session(frame);
  RequireOwnFiles(session, {arguments.script, arguments.junit});
  session.Open(arguments.file);
  if (arguments.join) {
    JoinResults(frame, session, arguments);
  } else {
    WritePipeline(frame, session, arguments);
  }
}

}  // namespace

void AddPipelineCommand(CLI::App& app, Frame& frame) {
  CLI::App& command = *app.add_subcommand(
      "pipeline", "Write a pipeline that builds each checked project on a machine of a build farm");
  auto arguments = std::make_shared<PipelineArguments>();
  command.add_option("FILE.bpf", arguments->file, "Build project file")->required();
  command.add_flag("--gitlab", arguments->gitlab, "Write a child pipeline for GitLab");
  AddOutput(command, "-o,--output", arguments->output, "Write it to this file");
  command.add_option("--tags", arguments->tags, "Tags of the runners that take the jobs")
      ->delimiter(',');
  command.add_option("--image", arguments->image, "Container image of the jobs");
  command.add_option("--before", arguments->before,
                     "File with the commands that every job begins with");
  command.add_flag("--join", arguments->join,
                   "Join the results of the jobs into a script and a report");
  AddOutput(command, "--script", arguments->script, "Write the registration script to this file");
  AddOutput(command, "--junit", arguments->junit, "Write a JUnit report to this file");
  command.callback([&frame, arguments] { Pipeline(frame, *arguments); });
}

}  // namespace gorbex::cli
