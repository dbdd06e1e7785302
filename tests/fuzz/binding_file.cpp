#include "core/project_file.h"

#include "tests/fuzz/target.h"

namespace gorbex::test {

// A file that binds a folder to its place in source control.
void ReadInput(std::string_view input) {
  const std::string project = BoundProject(input);
  Require(project.find_first_of("\",") == std::string::npos, "a spec ends at a comma");
  Require(project.size() <= input.size(), "a spec is a part of the file");
  const std::string written = "SCC_Project_Name = \"" + project + "\", ABCDAAAA\r\n";
  Require(BoundProject(written) == project, "a spec that was written is read");
}

}  // namespace gorbex::test
