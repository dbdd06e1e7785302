#pragma once

#include <string>
#include <vector>

#include "tests/support/program_fixture.h"
#include "tests/support/window_journal.h"

namespace gorbex::test {

inline const std::string kCore = Group::Path("Core");

/// The whole program with a compiler at hand that writes its result log: every project builds but
/// the `failing` one. Compatibility is kept unless a test asks for more.
class BuildFixture : public ProgramFixture {
 protected:
  BuildFixture();

  /// Loads the projects added to the group, all of them queued and checked.
  void Load();

  /// Adds libraries with compatibility set and loads them.
  void Load(const std::vector<std::string>& names);

  /// A checked queue row of a loaded project.
  [[nodiscard]] ListRow& Row(const std::string& name) const;

  /// Takes a loaded project under source control, as its binding file would have.
  void Bind(const std::string& name, const std::string& spec);

  /// Runs the Build command and gives what happened, in order.
  Journal Build();

  /// The effects since the last call, without those on the activity log's own file.
  Journal Steps();

  [[nodiscard]] std::string Icons() const { return IconsOf(program.window.lvwQueue); }

  /// What the compiler writes and does for a command line.
  std::uint32_t CompileProject(const std::string& commandLine);

  static constexpr const char* kCompiler = "C:\\VB\\VB6.EXE";
  static constexpr const char* kResultLog = "C:\\Program Files\\GorbexBuilder\\VBResult.log";
  static constexpr const char* kBuildProcedure = ": frmBuilder.mnuFileBuild_Click";

  std::string failing;                       ///< the name of a project
  std::vector<std::string> compiledSources;  ///< the project files as the compiler saw them
  WindowJournal seen{program.window, program.log, platform.journal};
};

[[nodiscard]] std::size_t CountOf(const std::string& text, const std::string& part);

}  // namespace gorbex::test
