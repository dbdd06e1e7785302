#include "core/project_file.h"

#include <algorithm>
#include <vector>

#include "core/text.h"
#include "tests/fuzz/memory_program.h"
#include "tests/fuzz/target.h"
#include "tests/support/tree_nodes.h"

namespace gorbex::test {
namespace {

const std::string kPath = "C:\\Group\\Core\\Core.vbp";

// A file that says what the record says, as far as there is only one way to say it.
std::string Written(const ProjectFile& file) {
  const clsMember& member = file.member;
  std::vector<std::string> lines = file.properties;
  for (const auto& value : member.Refs) lines.push_back("Reference=" + value);
  for (const auto& value : member.Objects) lines.push_back("Object=" + value);
  lines.push_back("Type=" + member.MemberType);
  lines.push_back("Name=" + member.Name);
  lines.push_back("ExeName32=" + member.EXEName);
  lines.push_back("CompatibleEXE32=" + member.Compatibility);
  std::string text;
  for (const auto& line : lines) text.append(line).append(kLineBreak);
  return text;
}

void RequireSame(const ProjectFile& a, const ProjectFile& b) {
  Require(a.member.MemberType == b.member.MemberType, "the type is read as written");
  Require(a.member.Refs == b.member.Refs, "references are read as written");
  Require(a.member.Objects == b.member.Objects, "objects are read as written");
  Require(a.member.Name == b.member.Name, "the name is read as written");
  Require(a.member.EXEName == b.member.EXEName, "the binary is read as written");
  Require(a.member.Compatibility == b.member.Compatibility, "compatibility is read as written");
  Require(a.member.BinaryCompat == b.member.BinaryCompat, "its mode is read as written");
  Require(a.properties == b.properties, "properties are read as written");
}

void RequireWholeBranch(const ProjectFile& file, std::string_view input) {
  const clsMember& member = file.member;
  const auto lines = member.Refs.size() + member.Objects.size() + member.Members.size() +
                     member.UserControls.size() + file.properties.size();
  Require(lines <= static_cast<std::size_t>(std::count(input.begin(), input.end(), '=')),
          "every entry has a line");
  MemoryProgram made;
  made.platform.files.AddFile(kPath, std::string(input));
  Require(made.program.reader.ReadProject(kPath), "every text is read");
  constexpr std::size_t kRootWithHeadings = 6;
  Require(NodesOf(made.program.window.tvwProjects).size() == kRootWithHeadings + lines,
          "every entry has a node");
  Require(made.program.window.ProjectMembers.Item(kPath).Refs == member.Refs,
          "the record is what was read");
}

}  // namespace

void ReadInput(std::string_view input) {
  static_cast<void>(ProjectFileProblem(input));
  const ProjectFile file = ParseProjectFile(kPath, input);
  RequireSame(file, ParseProjectFile(kPath, Written(file)));
  RequireWholeBranch(file, input);
}

}  // namespace gorbex::test
