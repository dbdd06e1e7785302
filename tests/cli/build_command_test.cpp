#include "tests/cli/cli_fixture.h"
#include "tests/support/build_fixture.h"
#include "tests/support/window_journal.h"

namespace gorbex::test {
namespace {

using Json = nlohmann::json;

class BuildCommandTest : public CliFixture {
 protected:
  BuildCommandTest() { InstallCompiler(); }
};

TEST_F(BuildCommandTest, BuildReportsEveryProjectAndEndsWithTheRightStatus) {
  InstallCompiler({"Money"});
  const Result failed = Run({"build", file, "--json"});
  EXPECT_EQ(failed.status, 1);
  const Json json = failed.Json();
  EXPECT_EQ(json["built"], 2);
  EXPECT_EQ(json["errors"], 1);
  EXPECT_EQ(json["projects"][0], (Json{{"path", Group::Path("Core")},
                                       {"result", "built"},
                                       {"start", 0.0},
                                       {"seconds", 0.0},
                                       {"place", 1},
                                       {"log", "\r\nBuild of 'x' succeeded."},
                                       {"failure", nullptr},
                                       {"got", nullptr}}));
  EXPECT_EQ(json["projects"][1]["result"], "failed");
  EXPECT_EQ(json["end"], "finished");
  EXPECT_EQ(json["messages"], Json::array({"Errors during the build process"}));

  InstallCompiler();
  EXPECT_EQ(Run({"build", file}).status, 0);
  EXPECT_EQ(Run({"build", "C:\\missing.bpf"}).status, 2);
  EXPECT_EQ(Run({"build", file, "--version", "7"}).status, 2);
  platform.journal.clear();
  for (const char* wrong : {"3000.1000.1000", "9999.9999.9999"}) {
    EXPECT_EQ(Run({"build", file, "--version", wrong}).status, 2) << wrong;
  }
  for (const auto& [line, words] : {std::pair("version=2147.4836.48", "2147.4836.48: a version"),
                                    {"builddir=C:\\Bin\" /run \"C:\\x.vbp", "no such build folder"},
                                    {"breakonerror=perhaps", "Error 13"}}) {
    const Result refused = Run({"build", group.BuildProject({line})});
    EXPECT_EQ(refused.status, 2);
    EXPECT_NE(refused.err.find(words), std::string::npos) << refused.err;
  }
  group.BuildProject({"breakcompat=False"});
  EXPECT_EQ(Run({"build", file, "--compiler", "C:\\none.exe"}).status, 2);
  EXPECT_EQ(
      std::count(platform.journal.begin(), platform.journal.end(), "write " + Group::Path("Core")),
      0);
  EXPECT_EQ(Run({"build", file, "C:\\nobody.vbp"}).status, 2);
  EXPECT_EQ(Run({"build", file, "--nonsense"}).status, 2);
  EXPECT_EQ(Run({}).status, 2);
  for (const char* output : {"--script", "--junit", "--result", "--report"}) {
    EXPECT_EQ(Run({"build", file, output, file}).status, 2) << "would replace it: " << output;
    EXPECT_EQ(Run({"build", file, output, ""}).status, 2) << "no name: " << output;
    const std::string other = output == std::string("--junit") ? "--report" : "--junit";
    const Result both = Run({"build", file, output, "C:\\a\\..\\run", other, "c:\\RUN"});
    EXPECT_EQ(both.status, 2) << output;
    EXPECT_NE(both.err.find(": two options name this file"), std::string::npos) << both.err;
  }
  platform.files.AddFile("C:\\marked.bpf", "\xEF\xBB\xBF" + platform.files.Text(file));
  EXPECT_EQ(Run({"queue", "C:\\marked.bpf", "--save"}).status, 2);
}

TEST_F(BuildCommandTest, SkipsWhatUsesAFailedProjectAndSaysWhy) {
  InstallCompiler({"Core"});
  const std::vector<std::string> build = {"build", file, "--skip-users-of-failed", "--junit",
                                          "C:\\run.xml"};
  const Result run = Run(build);
  EXPECT_EQ(run.status, 1);
  const std::string reason = "it uses " + Group::Path("Core") + ", which failed";
  EXPECT_NE(run.out.find("skipped  " + reason), std::string::npos) << run.out;
  EXPECT_NE(run.out.find("0 built, 1 failed, 2 not built in"), std::string::npos) << run.out;
  EXPECT_EQ(CountOf(platform.files.Text("C:\\run.xml"), "<skipped message=\"" + reason + "\"/>"),
            2U);
  EXPECT_EQ(Run({"settings", "SkipUsersOfFailed", "true"}).out, "true\n");
  EXPECT_EQ(Run({"settings", "Editor", "\"code %FILE%"}).status, 2);
  const Json projects = Run({"build", file, "--json"}).Json()["projects"];
  EXPECT_EQ(projects[2]["result"], "notBuilt");
  EXPECT_EQ(projects[2]["log"], reason);
  for (const char* none : {"start", "seconds", "place", "failure", "got"}) {
    EXPECT_EQ(projects[2][none], nullptr) << none;
  }
}

TEST_F(BuildCommandTest, PlansAndSkipsWhatIsUpToDate) {
  const auto writeLog = platform.processes.otherwise;
  platform.processes.otherwise = [&](const std::string& line) {
    platform.files.AddFile("C:\\Group\\Bin\\Core.dll", "built");
    return writeLog(line);
  };
  platform.files.AddFile("C:\\VB\\VB6.EXE", "compiler");
  const std::string core = Group::Path("Core");
  ASSERT_EQ(Run({"settings", "Compatible", "true"}).status, 0);
  Json planned = Run({"plan", file, core, "--json"}).Json();
  EXPECT_EQ(planned["projects"][0]["reasons"][0]["kind"], "neverBuilt");
  EXPECT_EQ(planned["projects"][0]["lastSeconds"], nullptr);
  ASSERT_EQ(Run({"build", file, core}).status, 0);

  platform.journal.clear();
  const Result plan = Run({"plan", file, core});
  EXPECT_EQ(plan.status, 0);
  EXPECT_NE(plan.out.find("up to date  Core.vbp"), std::string::npos) << plan.out;
  EXPECT_NE(plan.out.find("0 to build, 1 up to date\n"), std::string::npos) << plan.out;
  for (const std::string& effect : platform.journal) {
    EXPECT_NE(effect.find("\\Logs\\"), std::string::npos) << "changed by a plan: " << effect;
  }
  planned = Run({"plan", file, core, "--json", "--debug", "--version", "9.0.0"}).Json();
  EXPECT_EQ(planned["projects"][0]["reasons"][0],
            (Json{{"kind", "version"},
                  {"subject", "9.0.0"},
                  {"text", "9.0.0 is wanted, 1.0.0 was built"}}));

  const Result run = Run({"build", file, core, "--outdated", "--junit", "C:\\run.xml"});
  EXPECT_EQ(run.status, 0);
  EXPECT_NE(run.out.find("0 built, 1 up to date in"), std::string::npos) << run.out;
  EXPECT_EQ(CountOf(platform.files.Text("C:\\run.xml"), "<skipped message=\"up to date\"/>"), 1U);
  ASSERT_EQ(Run({"settings", "SkipUpToDate", "true"}).status, 0);
  const Json fresh = Run({"build", file, core, "--json"}).Json()["projects"][0];
  EXPECT_EQ(fresh["result"], "upToDate");
  EXPECT_EQ(fresh["place"], nullptr) << "it had no compiler";
  const Json forced = Run({"build", file, core, "--no-outdated", "--json"}).Json();
  EXPECT_EQ(forced["projects"][0]["result"], "built");
  const std::string record = "C:\\Program Files\\GorbexBuilder\\gorbexbuilder.built";
  platform.files.SetAttributes(record, file_attribute::kReadOnly);
  const std::string warning = Run({"build", file, core, "--json"}).Json()["messages"][0];
  EXPECT_EQ(warning.find("What was built could not be noted"), warning.npos) << "nothing was built";
  const Json noted = Run({"build", file, core, "--no-outdated", "--json"}).Json()["messages"];
  EXPECT_EQ(noted[0].get<std::string>().find("What was built could not be noted"), 0U) << noted;
  const Json marked = Run({"queue", file, "mark", "--outdated", "--json"}).Json();
  EXPECT_EQ(marked[0]["checked"].get<bool>(), false);
  EXPECT_EQ(marked[1]["checked"].get<bool>(), true);
  EXPECT_EQ(Run({"queue", file, "--outdated"}).status, 2);
}

TEST_F(BuildCommandTest, BuildTakesNamedProjectsAloneAndNothingCheckedIsToldApart) {
  const Json named = Run({"build", file, group.Path("Money"), "--json"}).Json();
  ASSERT_EQ(named["projects"].size(), 1U);
  EXPECT_EQ(named["projects"][0]["path"], Group::Path("Money"));

  for (const char* name : {"Core", "Money", "Till"}) {
    ASSERT_EQ(Run({"queue", file, "unmark", Group::Path(name), "--save"}).status, 0);
  }
  EXPECT_EQ(Run({"build", file}).status, 3);
  EXPECT_EQ(Run({"build", file, "--all", "--json"}).Json()["projects"].size(), 3U);
}

TEST_F(BuildCommandTest, GetsSourcesFromAPlaceForOneRunAlone) {
  const std::vector<std::string> build = {
      "build", file, "--get", "--json", "--user", "me", "--ini", kIni, kCore, Group::Path("Money")};
  EXPECT_EQ(Run(build).status, 2) << "there is no such file";
  platform.files.AddFile(kIni, "[git]");
  platform.files.AddFile("C:\\Group\\Core\\mssccprj.scc", "SCC_Project_Name = \"$/Core\", AAAA");
  EXPECT_EQ(Journal(), Only(platform.journal, {"start"}));
  platform.sourceControl.files["$/Core/a.cls"] = {"1", "1", "1"};
  const Result done = Run(build);
  EXPECT_EQ(done.status, 0);
  EXPECT_EQ(done.Json()["projects"][0]["got"], true);
  EXPECT_EQ(done.Json()["projects"][1]["got"], nullptr) << "not under source control";
  EXPECT_EQ(Run({"settings", "INIPath"}).out, "\n");
}

TEST_F(BuildCommandTest, OverridesHoldForOneRunAlone) {
  platform.files.AddFolder("C:\\Out");
  ASSERT_EQ(Run({"build", file, "--version", "3.1.4", "--build-dir", "C:\\Out", "--stop-on-error"})
                .status,
            0);
  const Journal started = Only(platform.journal, {"start"});
  EXPECT_TRUE(!started.empty() && started[0].ends_with("/outdir \"C:\\Out\\\""));
  const Json settings = Run({"show", file, "--json"}).Json()["settings"];
  EXPECT_EQ(settings["VersionComponents"], "");
  EXPECT_EQ(settings["StopProcessing"], false);
}

TEST_F(BuildCommandTest, QuestionsAreAnsweredByOptionByTypingOrSafely) {
  group.Library("Loose").Line("CompatibleMode=\"0\"");
  file = group.BuildProject({"breakcompat=False"});
  const auto built = [&](const std::vector<std::string>& options, const std::string& typed,
                         bool asks) {
    std::vector<std::string> arguments = {"build", file, "--json"};
    arguments.insert(arguments.end(), options.begin(), options.end());
    return Run(arguments, typed, asks).Json()["built"].get<int>();
  };
  EXPECT_EQ(built({}, "", false), 0);
  EXPECT_EQ(built({"--no"}, "", false), 0);
  EXPECT_EQ(built({"--yes"}, "", false), 4);
  EXPECT_EQ(built({}, "perhaps\ny\n", true), 4);
  EXPECT_EQ(built({}, "", true), 0) << "the end of the input is the safe answer";
  const Result refused = Run({"build", file, "--junit", "C:\\run.xml"});
  EXPECT_EQ(refused.status, 1);
  EXPECT_NE(refused.err.find("answered: No"), std::string::npos);
  EXPECT_NE(refused.err.find("with --yes such a build goes on"), std::string::npos);
  EXPECT_NE(platform.files.Text("C:\\run.xml").find("errors=\"1\" skipped=\"4\""),
            std::string::npos);
}

TEST_F(BuildCommandTest, WritesAPageHoweverTheRunEnds) {
  InstallCompiler({"Money"});
  const auto page = [&](const std::vector<std::string>& options, int status) {
    std::vector<std::string> arguments = {"build", file, "--report", "C:\\run page.html"};
    arguments.insert(arguments.end(), options.begin(), options.end());
    EXPECT_EQ(Run(arguments).status, status);
    return platform.files.Text("C:\\run page.html");
  };
  const std::string failed = page({"--yes"}, 1);
  for (const std::string part :
       {": 2 built, 1 failed</h1>", "Syntax &lt;error&gt;", "<h2>Check</h2>",
        "Money.vbp: error: Compile Error", "--report &quot;C:\\run page.html&quot; --yes"}) {
    EXPECT_NE(failed.find(part), std::string::npos) << part;
  }
  group.Library("Alone").Line("Class=Gone; Gone.cls");
  file = group.BuildProject({"breakcompat=False"});
  const std::string refused = page({"--check", "--result", "C:\\run.json"}, 1);
  EXPECT_NE(refused.find("the check has found errors"), std::string::npos);
  EXPECT_NE(refused.find(": stopped: 0 built, 4 not built</h1>"), std::string::npos);
  const Json json = Json::parse(platform.files.Text("C:\\run.json"));
  EXPECT_EQ(json["end"], "stopped");
  EXPECT_EQ(json["projects"][3]["log"], "the run ended before its turn");
  EXPECT_NE(page({"--no"}, 1).find("0 built, 4 not built"), std::string::npos);
  platform.files.Fail(FileOperation::Write, "C:\\run page.html", ErrorNumber::DiskFull);
  EXPECT_NE(page({"--yes"}, 2), "");
}

TEST_F(BuildCommandTest, ReportsARunThatDidNotBeginAndNamesAMissingCompilerOnce) {
  platform.turn = [] { return nullptr; };
  EXPECT_EQ(Run({"build", file, "--junit", "C:\\run.xml"}).status, 1);
  const std::string xml = platform.files.Text("C:\\run.xml");
  EXPECT_EQ(CountOf(xml, "<skipped message=\"the run ended before its turn\"/>"), 3U) << xml;
  EXPECT_NE(
      xml.find("the run was stopped before its end\">stopped: 0 built, 3 not built&#10;ended"),
      std::string::npos)
      << xml;
  platform.turn = [] { return std::make_shared<int>(); };
  platform.files.Remove("C:\\VB\\VB6.EXE");
  const Result refused = Run({"build", file});
  EXPECT_EQ(refused.status, 2);
  EXPECT_EQ(CountOf(refused.err, "C:\\VB\\VB6.EXE: the registered compiler does not exist"), 1U);
  EXPECT_EQ(Only(platform.journal, {"start"}), Journal());
}

TEST_F(BuildCommandTest, AsksForTheCompilerUntilThereIsOne) {
  platform.registry.AddText(RegistryRoot::ClassesRoot, "VisualBasic.Project\\shell\\open\\command",
                            "", "");
  platform.files.AddFile("C:\\VB\\VB6.EXE", "");
  const Result asked = Run({"build", file}, "C:\\none.exe\nC:\\VB\\VB6.EXE\n", true);
  EXPECT_EQ(asked.status, 0) << asked.err;
  EXPECT_NE(asked.err.find("C:\\none.exe: no such file"), std::string::npos) << asked.err;
}

TEST_F(BuildCommandTest, ReferencesAreEmptiedOnlyAfterAYes) {
  const std::string money = platform.files.Text(Group::Path("Money"));
  const std::vector<std::string> build = {"build", file, Group::Path("Money"), "--change-refs"};
  const Result refused = Run(build);
  EXPECT_EQ(refused.status, 2);
  EXPECT_NE(refused.err.find("Money.vbp: C:\\Group\\BinCore.dll"), std::string::npos);
  EXPECT_EQ(platform.files.Text(Group::Path("Money")), money);
  std::vector<std::string> agreed = build;
  agreed.emplace_back("--yes");
  EXPECT_EQ(Run(agreed).status, 0);
  EXPECT_EQ(platform.files.Text(Group::Path("Money")).find('{'), std::string::npos);

  // Core is built first into a folder whose name is whole, but comes without an identity.
  platform.files.AddFile(Group::Path("Money"), money);
  platform.files.AddFolder("C:\\Out");
  const Result late = Run({"build", file, "--change-refs", "--build-dir", "C:\\Out"});
  EXPECT_EQ(late.status, 0);
  EXPECT_NE(late.err.find("Money.vbp: C:\\Out\\Core.dll"), std::string::npos);
  EXPECT_EQ(platform.files.Text(Group::Path("Money")), money);
}

TEST_F(BuildCommandTest, SaysOnceOnATerminalWhatIsInForce) {
  const std::string line =
      "Keeps compatibility - debug - each project's version - to C:\\Group\\Bin\n";
  EXPECT_EQ(CountOf(Run({"build", file, "--debug"}).err, line), 0U);
  animates = true;
  EXPECT_EQ(CountOf(Run({"build", file, "--debug"}).err, line), 1U);
}

TEST_F(BuildCommandTest, TheBarIsErasedOnEveryConsole) {
  animates = true;
  const std::string bars = Run({"build", file}).err;
  EXPECT_NE(bars.find(" s  compiling\r"), std::string::npos);
  EXPECT_EQ(bars.find('\033'), std::string::npos);
  const auto till = bars.rfind("Till.vbp");
  ASSERT_NE(till, std::string::npos);
  const auto erased = bars.find('\r', till);
  const std::size_t width = erased - bars.rfind('\r', till) - 1;
  EXPECT_EQ(bars.substr(erased, width + 2), "\r" + std::string(width, ' ') + "\r");
}

TEST_F(BuildCommandTest, ShowsARowForEachCompilerAtWork) {
  platform.processes.polls = 3;
  animates = movesCursor = true;
  const Result run = Run({"build", file, "--jobs", "2", "--junit", "C:\\run.xml"});
  EXPECT_EQ(run.status, 0);
  EXPECT_NE(run.err.find("0 of 3 done, 1 building\n  Core.vbp  "), std::string::npos) << run.err;
  EXPECT_NE(run.err.find("\033[1A"), std::string::npos);
  EXPECT_NE(platform.files.Text("C:\\run.xml").find("<property name=\"place\" value=\"1\"/>"),
            std::string::npos);
  for (const std::string jobs : {"-1", "65", "10000", "x", ""}) {
    EXPECT_EQ(Run({"build", file, "--jobs", jobs}).status, 2) << jobs;
  }
}

TEST_F(BuildCommandTest, WritesAPipelineAndJoinsWhatItsJobsLeave) {
  const std::string pipeline = Run({"pipeline", file, "--gitlab", "--tags", "vb6,fast"}).out;
  EXPECT_NE(pipeline.find("tags: [\"vb6\", \"fast\"]"), std::string::npos) << pipeline;
  EXPECT_NE(pipeline.find("needs: [\"build Core\", \"build Money\"]\n  script:\n"
                          "    - \"gorbex register 'C:\\\\Group\\\\Bin\\\\Core.dll'\""),
            std::string::npos)
      << pipeline;

  const std::string core = "C:\\Group\\Core.result.json";
  EXPECT_EQ(Run({"build", file, Group::Path("Core"), "--result", core}).status, 0);
  platform.files.AddFile("C:\\Group\\Money.result.json", "{\"projects\": [{}]}");
  const Result joined = Run({"pipeline", file, "--join", "--script", "C:\\r.svb"});
  EXPECT_EQ(joined.status, 1);
  EXPECT_EQ(joined.out, "1 built, 2 not built\n");
  EXPECT_NE(joined.err.find("Money.result.json: not the result of a build"), std::string::npos);
  EXPECT_EQ(CountOf(platform.files.Text("C:\\r.svb"), "Core.dll"), 1U);

  for (const std::string line : {"builddir=D:\\Out\\", "builddir=C:\\Group\\It's\\"}) {
    platform.files.AddFile("C:\\Group\\Odd.bpf", platform.files.Text(file) + line + "\r\n");
    EXPECT_EQ(Run({"pipeline", "C:\\Group\\Odd.bpf", "--gitlab"}).status, 2) << line;
  }
  EXPECT_EQ(Run({"pipeline", file}).status, 2);
}

}  // namespace
}  // namespace gorbex::test
