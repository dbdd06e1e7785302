#include "tests/build/build_fixture.h"

#include <algorithm>

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

std::string BuildFixture::Icons() const {
  std::string icons;
  for (const auto& row : program.window.lvwQueue.Rows()) {
    icons.append(icons.empty() ? "" : " ").append(ImageKey(row->Icon()));
  }
  return icons;
}

Journal Only(const Journal& journal, const std::vector<std::string>& words) {
  Journal lines;
  std::copy_if(journal.begin(), journal.end(), std::back_inserter(lines), [&](const auto& line) {
    return std::any_of(words.begin(), words.end(),
                       [&](const auto& word) { return line.starts_with(word + " "); });
  });
  return lines;
}

std::size_t CountOf(const std::string& text, const std::string& part) {
  std::size_t count = 0;
  for (auto at = text.find(part); at != std::string::npos; at = text.find(part, at + 1)) ++count;
  return count;
}

}  // namespace gorbex::test
