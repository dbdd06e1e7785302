#include "tests/support/build_fixture.h"

namespace gorbex::test {
namespace {

constexpr const char* kCompilerKey = "VisualBasic.Project\\shell\\open\\command";
constexpr const char* kRegistered = "\"C:\\VB98\\VB6.EXE\" \"%1\"";

class StartUpTest : public BuildFixture {
 protected:
  void Register(const std::string& command) {
    platform.registry.AddText(RegistryRoot::ClassesRoot, kCompilerKey, "", command);
  }
  void Set(const std::string& name, const std::string& text) {
    platform.registry.AddText(RegistryRoot::CurrentUser, kSettingsKey, name, text);
  }
  Journal Start(const std::string& commandLine = "") {
    program.start.SetCommandLine(commandLine);
    program.start.Form_Load();
    return Only(Steps(), {"log", "show", "open", "interval", "status"});
  }
};

TEST_F(StartUpTest, TakesTheStepsInTheirOrder) {
  Register(kRegistered);
  Set("INIPath", "C:\\VSS\\srcsafe.ini");
  Set("User", "me");
  Set("MRU2", "C:\\Old.bpf");
  Set("Interval", "300");
  Set("AutoStart", "true");
  program.window.menu.mnuToolsInBox.SetHandler([&] { program.window.SetStatus("in-box"); });
  EXPECT_EQ(Start("show"),
            (Journal{"log Application Started",
                     std::string("show Registry VB Path details HKEY_CLASSES_ROOT\\") +
                         kCompilerKey + "\r\n" + kRegistered,
                     "interval 60000", "status in-box"}));
  const frmBuilder& window = program.window;
  EXPECT_EQ(window.compilerPath, "C:\\VB98\\VB6.EXE");
  EXPECT_EQ(window.IniPath + " " + window.UserName, "C:\\VSS\\srcsafe.ini me");
  EXPECT_EQ(program.options.Interval, 60);
  EXPECT_EQ(window.tvwProjects.Item("root").Text(), "GorbexBuilder Projects");
  EXPECT_FALSE(window.menu.mnuFileMRU[0].visible.Get());
  EXPECT_TRUE(window.menu.mnuFileMRU[1].visible.Get());
  EXPECT_EQ(window.menu.mnuFileMRU[1].caption.Get(), "C:\\Old.bpf");
}

TEST_F(StartUpTest, OpensTheProjectNamedOnTheCommandLine) {
  Register(kRegistered);
  group.Library("Core");
  const std::string path = group.BuildProject();
  EXPECT_EQ(Start("C:\\None.bpf"),
            (Journal{"log Application Started", "show Could not open C:\\None.bpf project",
                     "interval 0"}));
  EXPECT_EQ(Only(Start(path), {"log"}).at(1), "log Opened Project " + path);
  EXPECT_EQ(program.window.ProjectMembers.Count(), 1U);
  EXPECT_FALSE(program.window.ProjectChanged);
}

TEST_F(StartUpTest, FindsTheCompilerOrAsksForIt) {
  using Row = std::array<const char*, 3>;
  for (const auto& [registered, chosen, compiler] :
       {Row{"\"C:\\VB6.EXE", "", "C:\\VB6.EXE"}, Row{"", "D:\\VB6.EXE", "D:\\VB6.EXE"},
        Row{"\"", "D:\\VB6.EXE", "D:\\VB6.EXE"}}) {
    Register(registered);
    dialogs.choices = {chosen};
    EXPECT_EQ(Only(Start(), {"open", "show"}).size(), *chosen == '\0' ? 0U : 1U);
    EXPECT_EQ(program.window.compilerPath, compiler);
  }
}

TEST_F(StartUpTest, ReportsAnIntervalThatNoTimerTakes) {
  Register(kRegistered);
  Set("Interval", "-2147483648");
  dialogs.answers = {Answer::Ignore};
  EXPECT_EQ(Start(), (Journal{"log Application Started",
                              Reported(6, "Overflow", ": frmBuilder.Form_Load")}));
}

}  // namespace
}  // namespace gorbex::test
