#include "tests/support/build_fixture.h"

namespace gorbex::test {

BuildFixture::BuildFixture() {
  program.window.compilerPath = kCompiler;
  program.options.Compatible = true;
  platform.processes.otherwise = [this](const std::string& commandLine) {
    return CompileProject(commandLine);
  };
}

void BuildFixture::Load() {
  ASSERT_TRUE(program.buildProject.LoadProject(group.BuildProject()));
  program.window.buildDirectory = "C:\\Out\\";
  platform.journal.clear();
}

void BuildFixture::Load(const std::vector<std::string>& names) {
  for (const auto& name : names) group.Library(name).Line("CompatibleMode=\"2\"");
  Load();
}

ListRow& BuildFixture::Row(const std::string& name) const {
  return *program.window.lvwQueue.Find(Group::Path(name));
}

void BuildFixture::Bind(const std::string& name, const std::string& spec) {
  clsMember member = program.window.ProjectMembers.Item(Group::Path(name));
  program.window.ProjectMembers.Remove(member.path);
  member.VSSProject = spec;
  program.window.ProjectMembers.Add(member);
}

std::uint32_t BuildFixture::CompileProject(const std::string& commandLine) {
  const auto begin = commandLine.find('"') + 1;
  const std::string path = commandLine.substr(begin, commandLine.find('"', begin) - begin);
  compiledSources.push_back(platform.files.Text(path));
  const bool fails = !failing.empty() && path == Group::Path(failing);
  platform.files.AddFile(
      kResultLog, fails ? "Build of 'X.dll' failed." : "\r\nBuild of 'X.dll' succeeded.\r\n");
  return fails ? 1 : 0;
}

Journal BuildFixture::Build() {
  program.run.mnuFileBuild_Click();
  return Steps();
}

Journal BuildFixture::Steps() {
  Journal steps = Effects();
  std::erase_if(steps, [&](const std::string& line) {
    return line == "append " + program.log.FileOf(program.log.Today()) || line.starts_with("mkdir");
  });
  return steps;
}

std::size_t CountOf(const std::string& text, const std::string& part) {
  std::size_t count = 0;
  for (auto at = text.find(part); at != std::string::npos; at = text.find(part, at + 1)) ++count;
  return count;
}

}  // namespace gorbex::test
