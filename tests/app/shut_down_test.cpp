#include "tests/support/build_fixture.h"

namespace gorbex::test {
namespace {

class ShutDownTest : public BuildFixture {
 protected:
  bool Close() { return program.shutDown.Form_QueryUnload(); }
};

TEST_F(ShutDownTest, KeepsWhatAnAbortedStartHasNotRead) {
  const auto stored = [&](const std::string& name) {
    return platform.registry.Text(RegistryRoot::CurrentUser, kSettingsKey, name);
  };
  const auto set = [&](const std::string& key, const std::string& name, const std::string& text) {
    platform.registry.AddText(RegistryRoot::CurrentUser, key, name, text);
  };
  set(kSettingsKey + "\\WindowPos", "Window", "1,2");
  for (const char* name : {"INIPath", "User", "BuildPath"}) set(kSettingsKey, name, "kept");
  dialogs.answers = {Answer::Abort};
  program.start.Form_Load();
  program.window.UserName = "me";
  EXPECT_TRUE(Close());
  EXPECT_EQ(stored("INIPath") + stored("BuildPath") + stored("User"), "keptkeptme");
}

TEST_F(ShutDownTest, StoresSessionSettingsAndPositionInTurn) {
  program.start.Form_Load();
  program.options.Interval = 60;
  program.window.UserName = "me";
  program.window.position.Set(WindowPosition{-150.5F, 30, 12000, 9000});
  EXPECT_TRUE(Close());
  const Journal steps = Steps();
  EXPECT_EQ(steps.back(), "log Quitting Application");
  const auto at = [&](const std::string& text) {
    return std::find_if(steps.begin(), steps.end(),
                        [&](const auto& line) { return line.find(text) != std::string::npos; });
  };
  EXPECT_TRUE(at("INIPath") < at("User") && at("User") < at("Interval") &&
              at("Interval") < at("WindowPos"));

  program.window.position.Set(std::nullopt);
  program.start.Form_Load();
  const auto& restored = program.window.position.Get();
  ASSERT_TRUE(restored);
  EXPECT_EQ(restored->left, -150.5F);
  EXPECT_EQ(restored->height, 9000);
}

TEST_F(ShutDownTest, KeepsTheWindowOpenWhileChangesCannotBeSaved) {
  Load({"Core"});
  program.window.ProjectChanged = true;
  platform.files.SetAttributes("C:\\Group\\Group.bpf", file_attribute::kReadOnly);
  dialogs.answers = {Answer::Yes, Answer::Abort};
  EXPECT_FALSE(Close()) << "the user wanted them saved";
  EXPECT_TRUE(Only(Steps(), {"log"}).empty());

  platform.files.SetAttributes("C:\\Group\\Group.bpf", 0);
  dialogs.answers = {Answer::Yes};
  EXPECT_TRUE(Close());
  EXPECT_FALSE(program.window.ProjectChanged);
}

TEST_F(ShutDownTest, EndsWithTheUsersSessionAndAsksNobody) {
  group.Library("Core").Line("CompatibleMode=\"2\"").Line("OptimizationType=1");
  Load();
  program.options.DebugBuild = "True";
  platform.processes.polls = 1000;
  bool isOver = false;
  platform.events.onEvents = [&] {
    if (std::exchange(isOver, true)) return;
    EXPECT_TRUE(program.shutDown.SessionMayEnd());
    program.shutDown.SessionEnds();
    EXPECT_NE(platform.files.Text(kCore).find("OptimizationType=1\r\n"), std::string::npos)
        << "the program may not live to the end of the run";
    EXPECT_EQ(Only(Steps(), {"show", "log Quitting"}), Journal{"log Quitting Application"});
  };
  EXPECT_EQ(Only(Build(), {"start"}), Journal{});
  EXPECT_TRUE(isOver);
  program.window.ProjectChanged = true;
  EXPECT_FALSE(program.shutDown.SessionMayEnd());
}

TEST_F(ShutDownTest, EndsACompilerThatDoesNotEnd) {
  Load({"Core"});
  platform.processes.polls = 1000000;
  dialogs.answers = {Answer::No, Answer::Yes};
  int presses = 0;
  platform.events.onEvents = [&] {
    if (presses++ < 3) program.window.menu.mnuFileStop.Execute();
  };
  const std::string question =
      "show [YesNo Exclamation] The compiler is still running. End it now?";
  EXPECT_EQ(Only(Build(), {"show"}),
            (Journal{question, question, "show Errors during the build process"}));
  EXPECT_GT(presses, 3) << "the wait went on after the first two";
  EXPECT_FALSE(program.window.menu.mnuFileStop.enabled.Get());
}

}  // namespace
}  // namespace gorbex::test
