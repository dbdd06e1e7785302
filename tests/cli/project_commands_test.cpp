#include "tests/cli/cli_fixture.h"

namespace gorbex::test {
namespace {

using Json = nlohmann::json;
using ProjectCommandsTest = CliFixture;

TEST_F(ProjectCommandsTest, RegisteringThatFailsSaysWhyNearlyAlways) {
  platform.files.AddFile("C:\\c.dll", "");
  platform.processes.QueueExitCode(5);
  const Result result = Run({"register", "C:\\c.dll"});
  EXPECT_EQ(result.status, 1);
  EXPECT_EQ(result.err, "gorbex: Failed to Register C:\\c.dll\ngorbex: ask an administrator\n");
}

TEST_F(ProjectCommandsTest, ShowGivesTheWholeStateAsJson) {
  const Json json = Run({"show", file, "--json"}).Json();
  EXPECT_EQ(json["title"], "GorbexBuilder [" + file + "]");
  ASSERT_EQ(json["projects"].size(), 3U);
  EXPECT_EQ(json["projects"][1]["binaryCompat"], true);
  EXPECT_EQ(json["projects"][1]["refs"].size(), 1U);
  EXPECT_EQ(json["tree"][0], (Json{{"key", "root"},
                                   {"parent", ""},
                                   {"text", "GorbexBuilder Projects"},
                                   {"image", "vbgroup"},
                                   {"tag", ""},
                                   {"checked", false},
                                   {"colour", "windowText"}}));
  std::size_t dependent = 0;
  for (const Json& node : json["tree"]) dependent += node["image"] == "dependancy" ? 1U : 0U;
  EXPECT_EQ(dependent, 3U);
  EXPECT_EQ(json["queue"][0]["subItems"].size(), 4U);
  EXPECT_EQ(json["settings"]["Compatible"], true);
}

TEST_F(ProjectCommandsTest, QueueCommandsWorkInTheOrderTyped) {
  const auto paths = [](const Result& result) {
    std::vector<std::string> names;
    for (const Json& row : result.Json()) names.push_back(row["key"]);
    return names;
  };
  const std::string core = Group::Path("Core");
  const std::string money = Group::Path("Money");
  const std::string till = Group::Path("Till");
  EXPECT_EQ(paths(Run({"queue", file, "down", core, "up", till, "--json"})),
            (std::vector<std::string>{money, till, core}));
  EXPECT_EQ(paths(Run({"queue", file, "remove", money, "--yes", "--json"})),
            (std::vector<std::string>{core, till}));
  EXPECT_EQ(paths(Run({"queue", file, "remove", money, "--json"})).size(), 3U)
      << "not without a yes";
  EXPECT_EQ(paths(Run({"queue", file, "remove", money, "add", money, "--yes", "--json"})),
            (std::vector<std::string>{core, till, money}));
  EXPECT_EQ(Run({"queue", file, "wiggle", core}).status, 2);
  EXPECT_EQ(Run({"queue", file, "up", "C:\\nobody.vbp"}).status, 2);
}

TEST_F(ProjectCommandsTest, QueueMarksWhatProjectsUseOrAreUsedBy) {
  group.Library("Alone").Line("CompatibleMode=\"2\"");
  file = group.BuildProject();
  const std::string money = Group::Path("Money");
  const auto marked = [&](const std::string& option) {
    std::vector<std::string> words = {"queue", file, "unmark"};
    for (const char* name : {"Core", "Money", "Till", "Alone"}) words.push_back(Group::Path(name));
    for (const std::string& word : {std::string("mark"), money, option, std::string("--json")}) {
      if (!word.empty()) words.push_back(word);
    }
    std::string names;
    for (const Json& row : Run(words).Json()) {
      const std::string key = row["key"];
      if (row["checked"]) names += key.substr(key.rfind('\\') + 1) + " ";
    }
    return names;
  };
  EXPECT_EQ(marked(""), "Money.vbp ");
  EXPECT_EQ(marked("--with-uses"), "Core.vbp Money.vbp ");
  EXPECT_EQ(marked("--with-users"), "Money.vbp Till.vbp ");
  EXPECT_EQ(Run({"queue", file, "unmark", money, "--with-uses"}).status, 2);
}

TEST_F(ProjectCommandsTest, SavingNeverDropsProjectsThatCouldNotBeRead) {
  const std::string before = platform.files.Text(file);
  platform.files.Remove(Group::Path("Till"));
  platform.files.AddFile(
      file, "project=" + Group::Path("Core") + "\r\nproject=" + Group::Path("Till") + "\r\n");
  const Result result = Run({"queue", file, "add", Group::Path("Core"), "--save"});
  EXPECT_EQ(result.status, 2);
  EXPECT_NE(result.err.find("missing:\n  " + Group::Path("Till")), std::string::npos);
  EXPECT_NE(platform.files.Text(file).find("Till.vbp"), std::string::npos);
  // A queue row without its project stops only those who build or write.
  platform.files.AddFile(file, before);
  const Result shown = Run({"show", file, "--json"});
  EXPECT_EQ(shown.status, 0) << shown.err;
  EXPECT_EQ(shown.Json()["queue"].size(), 2U);
  EXPECT_NE(shown.err.find("Till.vbp: its row of the queue is left out"), std::string::npos);
  EXPECT_EQ(Run({"references", file, Group::Path("Money")}).status, 0);
  EXPECT_EQ(Run({"graph", file}).status, 0);
  platform.files.AddFile(kIni, "[git]");
  EXPECT_EQ(Run({"changes", file, "--ini", kIni, "--user", "me"}).status, 0);
  for (const char* command : {"build", "get", "queue"}) {
    const Result refused = Run({command, file, "--yes"});
    EXPECT_EQ(refused.status, 2) << command;
    EXPECT_NE(refused.err.find("project files are missing:\n  " + Group::Path("Till") + "\n"),
              std::string::npos);
  }
  EXPECT_EQ(platform.files.Text(file), before);
  EXPECT_EQ(Run({"queue", file, "--remove-missing", "--save"}).status, 0);
  EXPECT_EQ(platform.files.Text(file).find("Till.vbp"), std::string::npos);
  EXPECT_EQ(Run({"queue", file}).status, 0);
}

TEST_F(ProjectCommandsTest, GraphNamesEveryEdgeOnceAndEveryCircle) {
  const Json graph = Run({"graph", file, "--json"}).Json();
  EXPECT_EQ(graph["edges"].size(), 3U);
  EXPECT_EQ(graph["cycles"], Json::array());
  group.Library("Egg").Uses("Hen");
  group.Library("Hen").Uses("Egg").Line("Reference=*\\A..\\Core\\Core.vbp");
  const Result circle = Run({"graph", group.BuildProject()});
  EXPECT_NE(circle.err.find("in a circle: " + Group::Path("Egg") + ", " + Group::Path("Hen")),
            std::string::npos);
  EXPECT_NE(
      circle.out.find("\"C:\\\\Group\\\\Hen\\\\Hen.vbp\" -> \"C:\\\\Group\\\\Core\\\\Core.vbp\""),
      std::string::npos);
  const Result drawn = Run({"graph", group.BuildProject(), "--json", "--svg", "C:\\group.svg"});
  const Json node = {{"path", Group::Path("Hen")}, {"name", "Hen"}, {"level", 1}};
  const Json edge = {Group::Path("Hen"), Group::Path("Core")};
  const auto has = [](const Json& list, const Json& wanted) {
    return std::find(list.begin(), list.end(), wanted) != list.end();
  };
  EXPECT_TRUE(has(drawn.Json()["nodes"], node)) << drawn.out;
  EXPECT_TRUE(has(drawn.Json()["edges"], edge)) << drawn.out;
  EXPECT_EQ(drawn.Json()["cycles"],
            Json::array({Json::array({Group::Path("Egg"), Group::Path("Hen")})}));
  EXPECT_NE(platform.files.Text("C:\\group.svg").find(">Hen</text>"), std::string::npos);
  const Result refused = Run({"graph", group.BuildProject(), "--svg", "C:\\none\\group.svg"});
  EXPECT_EQ(refused.status, 2);
  EXPECT_NE(refused.err.find("C:\\none\\group.svg: "), std::string::npos) << refused.err;
}

TEST_F(ProjectCommandsTest, InitQueuesDependenciesFirstFromGroupFilesAndFolders) {
  platform.files.AddFile("C:\\Group\\All.vbg",
                         "VBGROUP 5.0\nStartupProject=Till\\Till.vbp\nProject=Money\\Money.vbp\n"
                         "Project=Core\\Core.vbp\n");
  for (const char* source : {"C:\\Group\\All.vbg", "C:\\Group"}) {
    ASSERT_EQ(Run({"init", source, "-o", "C:\\new.bpf", "--force"}).status, 0);
    const Json queue = Run({"queue", "C:\\new.bpf", "--json"}).Json();
    ASSERT_EQ(queue.size(), 3U);
    EXPECT_EQ(queue[0]["key"], Group::Path("Core"));
    EXPECT_EQ(queue[2]["key"], Group::Path("Till"));
    EXPECT_EQ(queue[2]["subItems"][1], Group::Path("Money"));
  }
  EXPECT_EQ(Run({"init", "C:\\Group", "-o", "C:\\new.bpf"}).status, 2)
      << "an existing file is kept";
  for (const char* source : {"C:\\nowhere", ""}) {
    EXPECT_EQ(Run({"init", source, "-o", "C:\\other.bpf"}).status, 2) << source;
  }
}

TEST_F(ProjectCommandsTest, LineFeedProjectsAreNamedAndConvertedOnRequest) {
  const std::string path = Group::Path("Core");
  platform.files.AddFile(path, "Type=OleDll\nName=\"Core\"\nExeName32=\"Core.dll\"\n");
  const Result plain = Run({"init", "C:\\Group", "-o", "C:\\a.bpf"});
  EXPECT_NE(plain.err.find("CR LF?\n  [Yes/No] answered: No\n"), std::string::npos) << plain.err;
  EXPECT_NE(plain.err.find("Core.vbp: its lines end with LF only"), std::string::npos);
  EXPECT_EQ(Run({"init", "C:\\Group", "-o", "C:\\b.bpf", "--crlf"}).err.find("Core.vbp: its lines"),
            std::string::npos);
  EXPECT_EQ(platform.files.Text(path),
            "Type=OleDll\r\nName=\"Core\"\r\nExeName32=\"Core.dll\"\r\n");
}

TEST_F(ProjectCommandsTest, MissingNamesComponentsAndTheirProjects) {
  EXPECT_EQ(Run({"missing", file}).out, "No component missing\n");
  group.Library("Grid").Line("Object={F}#1.0#0; grid.ocx");
  file = group.BuildProject();
  const std::string grid = Group::Path("Grid");
  EXPECT_EQ(Run({"missing", file}).out,
            "grid.ocx\n  GUID      {F}\n  version   1.0\n  file      grid.ocx\n"
            "  verdict   Invalid GUID\n  projects  1\n    " +
                grid + "\n1 component missing\n");
  EXPECT_EQ(
      Run({"missing", file, "--json"}).Json(),
      Json::array({{{"name", "grid.ocx"},
                    {"guid", "{F}"},
                    {"version", "1.0"},
                    {"file", "grid.ocx"},
                    {"verdict", "Invalid GUID"},
                    {"projects", {{{"path", grid}, {"reference", "{F}#1.0#0; grid.ocx"}}}}}}));
}

TEST_F(ProjectCommandsTest, ValuesAreReadAndReplaced) {
  const std::string path = "C:\\v.vbp";
  platform.files.AddFile(path, "Type=Exe\r\nMajorVer=1\x1B\r\nLast=x");
  const std::vector<std::pair<std::string, std::string>> values = {
      {"majorver", "1\n"}, {"Last", "=x\n"}, {"Absent", "Type=Exe\r\nMajorVer=1\r\nLast=x\n"}};
  for (const auto& [key, value] : values) {
    EXPECT_EQ(Run({"value", "get", path, key}).out, value) << key;
  }
  EXPECT_EQ(Run({"value", "set", path, "MajorVer", "22"}).status, 0);
  EXPECT_EQ(platform.files.Text(path), "Type=Exe\r\nMajorVer=22\r\nLast=x\r\n");
  EXPECT_EQ(Run({"value", "set", path, "Absent", "1"}).status, 1);
  EXPECT_EQ(Run({"value", "get", "C:\\absent.vbp", "Type"}).status, 2);
  EXPECT_EQ(Run({"value", "set", path, "MajorVer", "1\r\nCommand32=evil"}).status, 2);
  EXPECT_EQ(Run({"value", "set", path, "MajorVer", "/22"}).status, 0) << "a value is no option";
  EXPECT_EQ(Run({"value", "get", path, "MajorVer"}).out, "/22\n");
}

TEST_F(ProjectCommandsTest, LogPrintsTheDayAsked) {
  Run({"show", file});
  const Json log = Run({"log", "--json"}).Json();
  EXPECT_EQ(log["lines"].size(), 2U);
  EXPECT_EQ(Run({"log", "01011980"}).status, 2);
  EXPECT_EQ(Run({"log", "..\\..\\x"}).status, 2);
}

TEST_F(ProjectCommandsTest, TextsOfStrangersCannotSteerTheTerminal) {
  const std::string core = Group::Path("Core");
  platform.files.AddFile(core, "Type=OleDll\r\nName=\"\x1b[2J\x90\x7f\xe9\"\r\n");
  const Result shown = Run({"show", file});
  EXPECT_EQ(shown.out.find('\x1b'), std::string::npos);
  EXPECT_NE(shown.out.find("[2J\xc3\xa9"), std::string::npos);
  for (const auto& arguments : std::vector<std::vector<std::string>>{
           {"show", file, "--json"}, {"value", "get", core, "Name", "--json"}, {"graph", file}}) {
    EXPECT_NE(Run(arguments).out.find("\\u001b[2J\\u0090\\u007f\xc3\xa9"), std::string::npos);
  }
}

}  // namespace
}  // namespace gorbex::test
