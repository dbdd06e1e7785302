#include "tests/cli/cli_fixture.h"

namespace gorbex::test {
namespace {

using SourceControlCommandsTest = CliFixture;

TEST_F(SourceControlCommandsTest, SourceControlCommandsRememberWhereItIs) {
  platform.files.AddFile(kIni, "[git]");
  platform.files.AddFile("C:\\Group\\Core\\mssccprj.scc", "SCC_Project_Name = \"$/Core\", AAAA");
  platform.files.AddFile("C:\\Group\\Money\\mssccprj.scc", "SCC_Project_Name = \"$/No\", AAAA");
  platform.sourceControl.files["$/Core/a.cls"] = {"1", "1", "1"};
  platform.sourceControl.outages = 1;
  EXPECT_EQ(Run({"get", file, "--ini", kIni, "--user", "builder"}).status, 2);
  EXPECT_EQ(Run({"settings", "INIPath"}).out, "\n") << "only one that opens";
  const Result got = Run({"get", file, "--ini", kIni, "--user", "builder"});
  EXPECT_EQ(got.status, 1);
  EXPECT_EQ(got.out, "got     " + Group::Path("Core") + "\nFAILED  " + Group::Path("Money") +
                         "\n      There is no item '$/No' in the database\n-       " +
                         Group::Path("Till") + ": not under source control\n");
  EXPECT_EQ(Run({"settings", "INIPath"}).out, std::string(kIni) + "\n");
  EXPECT_EQ(Run({"settings", "user"}).out, "builder\n");
  EXPECT_EQ(Run({"get", file, Group::Path("Core")}).status, 0);
  const Result tooLong = Run({"settings", "INIPath", "C:\\" + std::string(252, 'x')});
  EXPECT_EQ(tooLong.status, 2);
  EXPECT_NE(tooLong.err.find("INIPath: the value is longer than 254"), std::string::npos);
  EXPECT_EQ(Run({"settings", "INIPath", ""}).out, "\n");
  EXPECT_EQ(Run({"get", file}).status, 2);
}

TEST_F(SourceControlCommandsTest, SourceControlTellsWhatIsNotUnderIt) {
  platform.files.AddFile(kIni, "[git]");
  platform.files.AddFile("C:\\Group\\Till\\mssccprj.scc", "SCC_Project_Name = \"$/Till\", AAAA");
  platform.sourceControl.files["$/Till/a.cls"] = {"1", "1", "1"};
  const auto run = [&](std::vector<std::string> arguments) {
    arguments.insert(arguments.end(), {"--ini", kIni, "--user", "me"});
    return Run(arguments);
  };
  for (const char* command : {"get", "changes"}) {
    const Result result = run({command, file});
    EXPECT_EQ(result.status, 0) << result.err;
    EXPECT_NE(result.err.find("2 projects are passed over: not under source control"),
              std::string::npos)
        << result.err;
  }
  EXPECT_EQ(run({"get", file, Group::Path("Till")}).err, "");
  EXPECT_EQ(run({"label", file, "1.0", "-m", "", "--spec", "$/Till"}).status, 2);
  const Result label = run({"label", file, "1.0", "-m", "first"});
  EXPECT_EQ(label.status, 2);
  EXPECT_NE(label.err.find("Core.vbp: the first project is not under source control: --spec"),
            std::string::npos)
      << label.err;
  EXPECT_EQ(run({"label", file, "1.0", "-m", "first", "--spec", "$/Till"}).status, 0);
}

}  // namespace
}  // namespace gorbex::test
