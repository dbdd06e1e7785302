#include "tests/support/build_fixture.h"

namespace gorbex::test {
namespace {

using ProjectValueTest = BuildFixture;

TEST_F(ProjectValueTest, KeepsTheValuesThatADebugBuildReplaces) {
  struct Case {
    bool fails;
    std::string before, compiled, after;
  };
  const std::string two = "\r\n\r\n";
  const std::string keeps = "CompatibleMode=\"2\"\r\n";
  const std::string debug = "OptimizationType=2\r\nCodeViewDebugInfo=-1\r\n";
  const std::string kept = "OptimizationType=1\r\nCodeViewDebugInfo=0\r\n";
  const Case cases[] = {
      {false, kept, debug, kept},
      {true, "OptimizationType=1x\r\nCodeViewDebugInfo=\"-1\"\r\n", debug, kept},
      {true, "CodeViewDebugInfo=1.5\r\n", "CodeViewDebugInfo=-1\r\n", "CodeViewDebugInfo=2\r\n"},
      {false, "Title=x\r\n", "Title=x\r\n", "Title=x\r\n"}};
  Load({"Core"});
  program.options.DebugBuild = "True";
  for (const Case& c : cases) {
    SCOPED_TRACE(c.before);
    platform.files.AddFile(Group::Path("Core"), keeps + c.before);
    failing = c.fails ? "Core" : "";
    Build();
    EXPECT_EQ(compiledSources.back(), keeps + c.compiled + two);
    EXPECT_EQ(platform.files.Text(Group::Path("Core")), keeps + c.after + two + two);
  }
}

}  // namespace
}  // namespace gorbex::test
