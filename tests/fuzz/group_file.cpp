#include "core/group_file.h"

#include <unordered_set>

#include "core/text.h"
#include "platform/code_page.h"
#include "tests/fuzz/target.h"

namespace gorbex::test {
namespace {

const std::string kPath = "C:\\Group\\Group.vbg";

void RequireResolved(const std::string& project) {
  Require(!project.empty(), "every project has a path");
  for (const auto name : Split(project, '\\')) {
    Require(name != "." && name != "..", "paths are resolved");
  }
  const auto climbed = ProjectsInGroup(kPath, "Project=\"" + Climbing(project, "x.vbp") + "\"");
  Require(climbed == std::vector<std::string>{RootOf(project) + "\\x.vbp"},
          "no path leaves its drive or share");
}

}  // namespace

void ReadInput(std::string_view input) {
  const auto projects = ProjectsInGroup(kPath, input);
  std::unordered_set<std::string> known;
  std::string written = "VBGROUP 5.0\r\n";
  for (const auto& project : projects) {
    RequireResolved(project);
    Require(known.insert(LowerCase(project)).second, "every project is named once");
    written.append("Project=\"").append(project).append("\"\r\n");
  }
  Require(ProjectsInGroup(kPath, written) == projects, "projects that were written are read");
  const std::string windowsText = WithCrLf(input);
  Require(WithCrLf(windowsText) == windowsText, "line ends are made right once");
}

}  // namespace gorbex::test
