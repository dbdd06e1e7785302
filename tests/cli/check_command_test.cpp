#include "cli/annotations.h"
#include "tests/cli/cli_fixture.h"

namespace gorbex::test {
namespace {

using cli::CiSystem;

const std::string kTill = Group::Path("Till");

class CheckCommandTest : public CliFixture {
 protected:
  CheckCommandTest() {
    InstallCompiler();
    platform.files.AddFile("C:\\VB\\VB6.EXE", "MZ");
    for (const char* name : {"Core", "Money"}) {
      platform.files.AddFile(Group::Path(name),
                             platform.files.Text(Group::Path(name)) + "CompatibleEXE32=\"a\"\r\n");
      platform.files.AddFile(std::string("C:\\Group\\") + name + "\\a", "{1}");
    }
    SetTill("Form=Basket.frm");
  }

  void SetTill(const std::string& line) { platform.files.AddFile(kTill, whole_ + line + "\r\n"); }

  std::string whole_ = platform.files.Text(kTill);
  const std::string basket = kTill + ":8: error: Basket.frm is missing [source-missing]\n";
};

TEST_F(CheckCommandTest, PrintsALineForEachFindingWithAStatus) {
  const std::string one = basket + "1 error, 0 warnings\n";
  for (const std::vector<std::string>& named :
       std::vector<std::vector<std::string>>{{file},
                                             {"C:\\Group"},
                                             {"C:\\Group\\All.vbg"},
                                             {kTill, Group::Path("Money"), Group::Path("Core")}}) {
    platform.files.AddFile("C:\\Group\\All.vbg",
                           "VBGROUP 5.0\r\nProject=Core\\Core.vbp\r\nProject=Money\\Money.vbp\r\n"
                           "StartupProject=Till\\Till.vbp\r\n");
    std::vector<std::string> arguments = {"check"};
    arguments.insert(arguments.end(), named.begin(), named.end());
    const auto result = Run(arguments);
    EXPECT_EQ(result.out, one) << named.front();
    EXPECT_EQ(result.err, "");
    EXPECT_EQ(result.status, 1);
  }
  platform.files.AddFile("C:\\Group\\Till\\Basket.frm", "\r\n");
  platform.files.AddFile("C:\\Group\\Core\\Spare.vbp", "Type=Exe\r\n");
  const auto warned = Run({"check", file});
  EXPECT_EQ(
      warned.out,
      "C:\\Group\\Core\\Spare.vbp: warning: no build project of the folder names this project "
      "[not-in-build-project]\n0 errors, 1 warning\n");
  EXPECT_EQ(warned.status, 0);
}

TEST_F(CheckCommandTest, ChoosesChecks) {
  EXPECT_EQ(Run({"check", "--only", "circle", file}).out, "No problem found\n");
  EXPECT_EQ(Run({"check", "--ignore", "source-missing,circle", file}).status, 0);
  platform.files.AddFile("C:\\Group\\.gorbexcheck", "source-missing\r\n");
  EXPECT_EQ(Run({"check", file}).out, "No problem found\n");
  EXPECT_EQ(Run({"check", "--only", "source-missing", file}).status, 1);
  for (const auto& arguments : std::vector<std::vector<std::string>>{
           {"--only", "nonsense", file}, {"--ignore", "nonsense", file}, {file, kTill}}) {
    auto words = arguments;
    words.insert(words.begin(), "check");
    EXPECT_EQ(Run(words).status, 2);
  }
  EXPECT_NE(Run({"check", "--only", "nonsense", file}).err.find("unknown check: nonsense"),
            std::string::npos);
  platform.files.AddFile("C:\\Group\\.gorbexcheck", "\x1b[31mred\n");
  const auto refused = Run({"check", file});
  EXPECT_EQ(refused.status, 2);
  EXPECT_EQ(refused.err, "gorbex: C:\\Group\\.gorbexcheck, line 1: unknown check \"[31mred\"\n");
}

TEST_F(CheckCommandTest, WritesJsonAndSarif) {
  const auto result = Run({"check", "--json", "--sarif", "C:\\out.sarif", file});
  const auto json = result.Json();
  EXPECT_EQ(json["errors"], 1);
  EXPECT_EQ(json["findings"][0]["line"], 8);
  EXPECT_EQ(json["findings"][0]["projects"], nlohmann::json::array({kTill}));
  const auto sarif = nlohmann::json::parse(platform.files.Text("C:\\out.sarif"));
  const auto& found = sarif["runs"][0]["results"][0];
  const auto& rules = sarif["runs"][0]["tool"]["driver"]["rules"];
  EXPECT_EQ(rules[found["ruleIndex"].get<std::size_t>()]["id"], found["ruleId"]);
  EXPECT_EQ(
      found["locations"][0]["physicalLocation"].dump(),
      R"({"artifactLocation":{"uri":"file:///C:/Group/Till/Till.vbp"},"region":{"startLine":8}})");
}

TEST_F(CheckCommandTest, KeepsABuildFromItsErrors) {
  const auto refused = Run({"build", "--check", file, "--json", "--junit", "C:\\run.xml"});
  EXPECT_EQ(refused.status, 1);
  EXPECT_NE(refused.err.find(basket), std::string::npos);
  EXPECT_EQ(refused.Json()["projects"][0]["result"], "notBuilt");
  EXPECT_NE(platform.files.Text("C:\\run.xml"), "<absent>");
  platform.files.AddFile("C:\\Group\\Till\\Basket.frm", "\r\n");
  EXPECT_EQ(Run({"build", "--check", file, "--yes"}).status, 0);
}

TEST_F(CheckCommandTest, FollowsANewBuildProject) {
  const auto made = Run({"init", "C:\\Group", "-o", "C:\\Group\\New.bpf"});
  EXPECT_EQ(made.status, 0);
  EXPECT_EQ(made.out, "3 projects in C:\\Group\\New.bpf\n" + basket + "1 error, 0 warnings\n");
}

TEST_F(CheckCommandTest, ShowsColoursOnATerminal) {
  colours = true;
  EXPECT_NE(Run({"check", file}).out.find("\033[1;31merror: \033[0mBasket.frm"), std::string::npos);
}

TEST_F(CheckCommandTest, GivesFindingsAndFailuresToABuildServer) {
  SetTill("Form=##vso[x]y%##teamcity[z 'a'].frm");
  const std::string text = "##vso[x]y%##teamcity[z 'a'].frm is missing";
  const std::vector<std::pair<CiSystem, std::string>> kExpected = {
      {CiSystem::GitHub,
       "::error file=C%3A\\Group\\Till\\Till.vbp,line=8,title=source-missing::##vso[x]y%25"
       "##teamcity[z 'a'].frm is missing\n"},
      {CiSystem::Azure,
       "##vso[task.logissue type=error;sourcepath=C:\\Group\\Till\\Till.vbp;linenumber=8;"
       "code=source-missing;]##vso[x]y%AZP25##teamcity[z 'a'].frm is missing\n"},
      {CiSystem::TeamCity,
       "##teamcity[message text='C:\\Group\\Till\\Till.vbp:8: ##vso|[x|]y%##teamcity|[z "
       "|'a|'|].frm "
       "is missing |[source-missing|]' status='ERROR']\n"}};
  for (const auto& [system, line] : kExpected) {
    ci = system;
    EXPECT_EQ(Run({"check", file}).out,
              kTill + ":8: error: # #vso[x]y%# #teamcity[z 'a'].frm is missing [source-missing]\n" +
                  "1 error, 0 warnings\n" + line);
    const auto json = Run({"check", "--json", file});
    EXPECT_EQ(json.out.find("##"), std::string::npos);
    EXPECT_EQ(json.Json()["findings"][0]["text"], text);
    EXPECT_EQ(json.err, line);
  }
  InstallCompiler({"Core"});
  ci = CiSystem::GitHub;
  const std::string words =
      "title=build::Compile Error in File 'C:\\x.bas', Line 4 : Syntax <error>";
  for (const std::string place : {"C%3A\\Group\\Core\\Core.vbp,", "C%3A\\x.bas,line=6,"}) {
    const std::string out = Run({"build", file, Group::Path("Core"), "--yes"}).out;
    EXPECT_NE(out.find("\n::error file=" + place + words), std::string::npos) << out;
    platform.files.AddFile("C:\\x.bas", "Attribute VB_Name = \"x\"\n\n\n\n\n");
  }
}

}  // namespace
}  // namespace gorbex::test
