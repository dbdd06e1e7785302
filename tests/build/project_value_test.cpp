#include "tests/build/build_fixture.h"

namespace gorbex::test {
namespace {

using ProjectValueTest = BuildFixture;

TEST_F(ProjectValueTest, ReadsAndReplacesTheFirstMatchInTheText) {
  struct Case {
    std::string text, value, written;
  };
  const std::string last = "Type=Exe\r\nMajorVer=4";
  const Case cases[] = {
      {"Type=Exe\r\nMajorVer=4\r\nTitle=\"x\"\r\n", "4",
       "Type=Exe\r\nMajorVer=17\r\nTitle=\"x\"\r\n\r\n"},
      {"majorver=4\r\n", "4", "majorver=17\r\n\r\n"},
      {"MajorVer=\r\n", "", "MajorVer=17\r\n\r\n"},
      {"OldMajorVer=4\r\nMajorVer=5\r\n", "4", "OldMajorVer=17\r\nMajorVer=5\r\n\r\n"},
      {"Title=MajorVer=9 or so\nMajorVer=5\n", "9 or so", "Title=MajorVer=17\nMajorVer=5\n\r\n"},
      {"MajorVer =4\r\n", "MajorVer =4\r\n", "MajorVer =4\r\n\r\n"},
      {last, "=4", "Type=Exe\r\nMajorVer=17\r\n"},
      {"MajorVer=", "=", "MajorVer=17\r\n"},
      {"", "", "\r\n"},
      {"Title=\xE9\x81\r\nMajorVer=4\r", "4", "Title=\xE9\x81\r\nMajorVer=17\r\r\n"}};
  for (const Case& c : cases) {
    SCOPED_TRACE(c.text);
    platform.files.AddFile("C:\\P.vbp", c.text);
    EXPECT_EQ(program.values.ReadProjectValue("C:\\P.vbp", "MajorVer"), c.value);
    EXPECT_FALSE(program.values.WriteProjectValue("C:\\P.vbp", "MajorVer", "17"));
    EXPECT_EQ(platform.files.Text("C:\\P.vbp"), c.written);
  }
}

TEST_F(ProjectValueTest, LeavesAFileItMayNotChange) {
  platform.files.AddFile("C:\\P.vbp", "MajorVer=4\r\n", file_attribute::kReadOnly);
  Journal failures;
  const auto listening =
      program.values.failed.Connect([&](const std::string& path, const RuntimeError& error) {
        failures.push_back(path + " " + std::to_string(error.Number()));
      });
  program.values.WriteProjectValue("C:\\P.vbp", "MajorVer", "5");
  EXPECT_EQ(platform.files.Text("C:\\P.vbp"), "MajorVer=4\r\n");
  EXPECT_EQ(platform.files.Look("C:\\P.vbp")->attributes, file_attribute::kReadOnly);
  program.values.WriteProjectValue("C:\\None.vbp", "MajorVer", "5");
  EXPECT_EQ(platform.files.Text("C:\\None.vbp"), "<absent>");
  EXPECT_EQ(program.values.ReadProjectValue("C:\\None.vbp", "MajorVer"), "");
  EXPECT_EQ(failures, (Journal{"C:\\P.vbp 75", "C:\\None.vbp 53", "C:\\None.vbp 53"}));
  EXPECT_TRUE(Steps().empty());
}

TEST_F(ProjectValueTest, KeepsTheValuesThatADebugBuildReplaces) {
  struct Case {
    bool fails;
    std::string before, compiled, after;
  };
  const std::string two = "\r\n\r\n";
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
    platform.files.AddFile(Group::Path("Core"), c.before);
    failing = c.fails ? "Core" : "";
    Build();
    EXPECT_EQ(compiledSources.back(), c.compiled + two);
    EXPECT_EQ(platform.files.Text(Group::Path("Core")), c.after + two + two);
  }
}

}  // namespace
}  // namespace gorbex::test
