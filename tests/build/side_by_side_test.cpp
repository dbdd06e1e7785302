#include <algorithm>
#include <map>
#include <random>

#include "tests/support/build_fixture.h"

namespace gorbex::test {
namespace {

/// Libraries with compilers that take different times, and a record of who was at work with whom.
class SideBySideTest : public BuildFixture {
 protected:
  SideBySideTest() {
    program.options.Jobs = 4;
    listening_ = program.run.events.Connect([this](const RunEvent& event) {
      if (const auto* started = std::get_if<ProjectStarted>(&event)) {
        Started(*started);
      } else if (const auto* compiled = std::get_if<ProjectCompiled>(&event)) {
        building.erase(compiled->path);
        done.push_back(compiled->path);
      }
    });
  }

  void Started(const ProjectStarted& started) {
    platform.processes.polls = static_cast<int>(random() % 6);
    for (const auto& [path, place] : building) EXPECT_NE(place, started.place);
    building[started.path] = started.place;
    most = std::max(most, building.size());
    if (atStart) atStart(started.path);
  }

  [[nodiscard]] std::string Log() const {
    return platform.files.Text(program.log.FileOf(program.log.Today()));
  }

  std::mt19937 random{7};
  std::map<std::string, std::size_t> building;  ///< places by path
  std::size_t most = 0;
  std::vector<std::string> done;
  std::function<void(const std::string& path)> atStart;

 private:
  Subscription listening_;
};

TEST_F(SideBySideTest, BuildsAGraphInAnyTimesWithTheResultOfOneAfterTheOther) {
  for (int i = 0; i < 24; ++i) {
    const std::string name = "L" + std::to_string(i);
    GroupProject& project = group.Library(name).Line("CompatibleMode=\"2\"");
    for (std::size_t use = i == 0 ? 0 : random() % 3; use > 0; --use) {
      project.Uses("L" + std::to_string(random() % static_cast<std::size_t>(i)));
    }
  }
  Load();
  program.options.Jobs = 1;
  Build();
  const std::string script = program.window.registrationScript;
  const std::string icons = Icons();
  EXPECT_EQ(most, 1U);
  program.options.Jobs = 4;
  for (int round = 0; round < 20; ++round) {
    done.clear();
    Build();
    EXPECT_EQ(done.size(), 24U);
    EXPECT_EQ(program.window.registrationScript, script);
    EXPECT_EQ(Icons(), icons);
  }
  EXPECT_EQ(most, 4U);
}

TEST_F(SideBySideTest, KeepsTheLogLinesOfAProjectTogether) {
  Load({"A", "B", "C"});
  failing = "B";
  program.options.Compatible = false;
  Build();
  const std::string log = Log();
  for (const std::string name : {"A", "B", "C"}) {
    const auto at = log.find("] " + Group::Path(name) + "\r\n");
    ASSERT_NE(at, std::string::npos);
    const auto breaking = log.find("Breaking compatability on " + Group::Path(name), at);
    EXPECT_EQ(std::count(log.begin() + static_cast<long>(at),
                         log.begin() + static_cast<long>(breaking), '\n'),
              1);
    const auto end = log.find("\r\n", log.find("Build was", breaking));
    EXPECT_EQ(log.substr(end - 12, 12), name == "B" ? "Unsuccesfull" : "s Succesfull");
  }
}

// The second one fails while the first and the third are at work: nothing more is started.
TEST_F(SideBySideTest, AwaitsTheOthersBeforeItAsksAboutAFailure) {
  Load({"A", "B", "C", "D", "E"});
  program.options.Jobs = 3;
  program.options.StopProcessing = true;
  failing = "B";
  atStart = [&](const std::string& path) {
    platform.processes.polls = path == Group::Path("B") ? 1 : 200;
  };
  dialogs.answers = {Answer::Cancel};
  EXPECT_EQ(Only(Build(), {"show"}).front(),
            "show [OkCancel CriticalStop] Error Building " + Group::Path("B") + " Continue?");
  EXPECT_EQ(Icons(), "buildok builderror buildok vbproject vbproject");

  dialogs.answers = {Answer::Ok};
  Build();
  EXPECT_EQ(Icons(), "buildok builderror buildok buildok buildok");
}

TEST_F(SideBySideTest, StopsAfterThoseAtWorkAndEndsThemAllWhenTold) {
  for (const std::string name : {"A", "B", "C", "D", "E"}) {
    group.Library(name).Line("CompatibleMode=\"2\"").Line("OptimizationType=1");
  }
  Load();
  program.options.Jobs = 2;
  program.options.DebugBuild = "True";
  std::size_t started = 0;
  atStart = [&](const std::string&) {
    platform.processes.polls = 200;
    if (++started == 2) program.run.mnuFileStop_Click();
  };
  Build();
  EXPECT_EQ(Icons(), "buildok buildok vbproject vbproject vbproject");

  started = 0;
  atStart = [&](const std::string&) {
    platform.processes.polls = 100'000;
    if (++started == 2) platform.events.onEvents = [&] { program.run.End(); };
  };
  EXPECT_EQ(Only(Build(), {"start"}).size(), 2U);
  EXPECT_EQ(Icons(), "builderror builderror vbproject vbproject vbproject");
  for (const std::string name : {"A", "B"}) {
    EXPECT_NE(platform.files.Text(Group::Path(name)).find("OptimizationType=1"), std::string::npos);
  }
}

// An error report answered with Abort ends the run; what is at work is awaited and recorded.
TEST_F(SideBySideTest, LosesNobodyWhenAnErrorEndsTheRun) {
  Load({"A", "B", "C"});
  atStart = [&](const std::string& path) {
    platform.processes.polls = path == Group::Path("A") ? 1 : 100;
    if (path != Group::Path("C")) return;
    program.window.lvwQueue.Remove(Row("A"));
  };
  dialogs.answers = {Answer::Abort};
  Build();
  EXPECT_EQ(Icons(), "buildok buildok");
  EXPECT_NE(program.window.registrationScript.find("C.dll"), std::string::npos);
  EXPECT_FALSE(program.work.Goes(Task::Program));
}

TEST_F(SideBySideTest, NeverBuildsTwoIntoOneFileOrFromOneFolder) {
  group.Library("A").Line("CompatibleMode=\"2\"").Line("Class=One; ..\\Common\\One.cls");
  group.Library("B").Line("CompatibleMode=\"2\"").Line("Class=Two; ..\\common\\Two.cls");
  group.Library("C").Line("CompatibleMode=\"2\"").Line("ExeName32=\"D.dll\"");
  group.Library("D").Line("CompatibleMode=\"2\"");
  Load();
  atStart = [&](const std::string&) {
    platform.processes.polls = 50;
    const auto goes = [&](const std::string& name) { return building.contains(Group::Path(name)); };
    EXPECT_FALSE(goes("A") && goes("B"));
    EXPECT_FALSE(goes("C") && goes("D"));
  };
  Build();
  EXPECT_EQ(most, 2U);
  EXPECT_EQ(done.size(), 4U);
}

}  // namespace
}  // namespace gorbex::test
