#pragma once

#include <string>
#include <vector>

#include "tests/support/program_fixture.h"
#include "tests/support/window_journal.h"

namespace gorbex::test {

inline const std::string kCore = Group::Path("Core");

[[nodiscard]] inline std::size_t CountOf(const std::string& text, const std::string& part) {
  std::size_t count = 0;
  for (auto at = text.find(part); at != std::string::npos; at = text.find(part, at + 1)) ++count;
  return count;
}

/// The whole program with a compiler at hand that writes its result log: every project builds but
/// the `failing` one. Compatibility is kept unless a test asks for more.
class BuildFixture : public ProgramFixture {
 protected:
  BuildFixture() {
    program.window.compilerPath = kCompiler;
    program.options.Compatible = true;
    platform.processes.otherwise = [this](const std::string& commandLine) {
      return CompileProject(commandLine);
    };
  }

  /// Loads the projects added to the group, all of them queued and checked.
  void Load() {
    ASSERT_TRUE(program.buildProject.LoadProject(group.BuildProject()));
    program.window.buildDirectory = "C:\\Out\\";
    platform.journal.clear();
  }

  /// Adds libraries with compatibility set and loads them.
  void Load(const std::vector<std::string>& names) {
    for (const auto& name : names) group.Library(name).Line("CompatibleMode=\"2\"");
    Load();
  }

  /// A checked queue row of a loaded project.
  [[nodiscard]] ListRow& Row(const std::string& name) const {
    return *program.window.lvwQueue.Find(Group::Path(name));
  }

  /// Takes a loaded project under source control, as its binding file would have.
  void Bind(const std::string& name, const std::string& spec) {
    clsMember member = program.window.ProjectMembers.Item(Group::Path(name));
    program.window.ProjectMembers.Remove(member.path);
    member.VSSProject = spec;
    program.window.ProjectMembers.Add(member);
  }

  /// Runs the Build command and gives what happened, in order.
  Journal Build() {
    program.run.mnuFileBuild_Click();
    return Steps();
  }

  /// The effects since the last call, without those on the activity log's own file.
  Journal Steps() {
    Journal steps = Effects();
    std::erase_if(steps, [&](const std::string& line) {
      return line == "append " + program.log.FileOf(program.log.Today()) ||
             line.starts_with("mkdir");
    });
    return steps;
  }

  [[nodiscard]] std::string Icons() const { return IconsOf(program.window.lvwQueue); }

  /// What the compiler writes and does for a command line.
  std::uint32_t CompileProject(const std::string& commandLine) {
    const auto begin = commandLine.find('"') + 1;
    const std::string path = commandLine.substr(begin, commandLine.find('"', begin) - begin);
    compiledSources.push_back(platform.files.Text(path));
    const bool fails = !failing.empty() && path == Group::Path(failing);
    const auto log = commandLine.find("/out \"") + 6;
    platform.files.AddFile(
        commandLine.substr(log, commandLine.find('"', log) - log),
        fails ? "Build of 'X.dll' failed." : "\r\nBuild of 'X.dll' succeeded.\r\n");
    return fails ? 1 : 0;
  }

  static constexpr const char* kCompiler = "C:\\VB\\VB6.EXE";
  static constexpr const char* kResultLog = "C:\\Program Files\\GorbexBuilder\\VBResult.log";
  static constexpr const char* kBuildProcedure = ": frmBuilder.mnuFileBuild_Click";

  std::string failing;                       ///< the name of a project
  std::vector<std::string> compiledSources;  ///< the project files as the compiler saw them
  WindowJournal seen{program.window, program.log, platform.journal};
};

}  // namespace gorbex::test
