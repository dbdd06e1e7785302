#include <algorithm>
#include <optional>

#include "tests/support/build_fixture.h"

namespace gorbex::test {
namespace {

const std::string kShop = Group::Path("Shop");
constexpr const char* kCompatibilityQuestion =
    "show [YesNo CriticalStop GorbexBuilder] You are attempting to build files which DO NOT have "
    "compatability set.\r\nIf you have other components referencing these then they WILL NOT "
    "work.\r\nDo you wish to continue with your build?";

std::string With(std::string text, const std::string& from, const std::string& to) {
  return text.replace(text.find(from), from.size(), to);
}

class BuildRunTest : public BuildFixture {
 protected:
  /// "Core", kept out of the run, and "Shop", which uses it and is under source control.
  void LoadShop() {
    group.Library("Core").Line("CompatibleMode=\"2\"");
    GroupProject& shop = group.Executable("Shop").Uses("Core").Line("CompatibleMode=\"2\"");
    shop.Line("OptimizationType=0").Line("CodeViewDebugInfo=1");
    shop.Line("MajorVer=1").Line("MinorVer=2").Line("RevisionVer=3");
    platform.files.AddFile("C:\\Group\\Shop\\mssccprj.scc", "SCC_Project_Name = \"$/Shop\", AAAA");
    platform.sourceControl.localSpecs["$/Shop"] = "C:\\Work\\Shop";
    program.window.IniPath = "srcsafe.ini";
    dialogs.LogsIn();
    program.session.LoginToSourceSafe();
    Steps();
    platform.components.guids["C:\\Out\\Core.dll"] = "{1F}";
    platform.registry.AddText(RegistryRoot::ClassesRoot, "Interface\\{1F}\\TypeLib", "", "{NEW}");
    Load();
    Row("Core").SetChecked(false);
    platform.files.AddFile(kResultLog, "Build of 'Old.dll' succeeded.", file_attribute::kReadOnly);
    platform.journal.clear();
  }
};

TEST_F(BuildRunTest, NamesTheProjectsThatItCouldNotChange) {
  Load({"Base", "Core", "Last"});
  program.options.VersionComponents = "1.2.4";
  std::vector<std::string> unamended;
  const Subscription listening = program.run.events.Connect([&](const RunEvent& event) {
    if (const auto* ended = std::get_if<RunEnded>(&event)) unamended = ended->unamended;
  });
  Build();
  EXPECT_EQ(unamended, std::vector<std::string>{});

  platform.files.SetAttributes(kCore, file_attribute::kReadOnly);
  const std::string told =
      "show [Ok Exclamation] These project files could not be changed, and hold other values than "
      "asked for:\r\n" +
      kCore;
  EXPECT_EQ(Only(Build(), {"show"}), (Journal{"show Built 3 components.", told}));
  EXPECT_EQ(unamended, std::vector<std::string>{kCore});
}

TEST_F(BuildRunTest, ShowsWhatItWroteAndRegistered) {
  group.Library("Core").Line("CompatibleMode=\"2\"").Line("MajorVer=1").Line("MinorVer=2");
  GroupProject& shop = group.Executable("Shop").Uses("Core").Line("CompatibleMode=\"2\"");
  shop.Line("Reference=*\\G{AB}#1.0#0#C:\\Other\\x.dll#");
  Load();
  frmBuilder& window = program.window;
  const TreeNode& core = window.tvwProjects.Item("x)" + kCore);
  program.display.tvwProjects_MouseDown(&window.tvwProjects.Item("x)" + kCore));
  ASSERT_EQ(window.lblVersion.Get(), "1.2.");
  ASSERT_EQ(Row("Core").SubItem(3) + Row("Core").SubItem(4), "CompatibleNot Found");
  const TreeNode& foreign = *window.tvwProjects.Item("r)" + kShop).Children().back();
  ASSERT_EQ(foreign.ImageOf(), Image::InvalidReference);
  int marked = 0;
  const auto marks = window.tvwProjects.nodeChanged.Connect(
      [&](const TreeNode& node, NodeChange) { marked += &node == &foreign ? 1 : 0; });
  platform.processes.otherwise = [&](const std::string& commandLine) {
    platform.files.AddFile("C:\\Out\\Core.dll", "");
    platform.registry.AddText(RegistryRoot::ClassesRoot, "TypeLib\\{AB}\\1.0\\0\\win32", "",
                              "C:\\Out\\Core.dll");
    EXPECT_FALSE(foreign.Checked()) << "not while something builds";
    return CompileProject(commandLine);
  };
  program.options.Compatible = false;
  program.options.VersionComponents = "3.4.5";
  Build();
  EXPECT_EQ(window.ProjectMembers.Item(kCore).BinaryCompat, false);
  EXPECT_EQ(window.lblVersion.Get(), "3.4.");
  EXPECT_EQ(Row("Core").SubItem(3), "NOT Compatible!");
  EXPECT_NE(Row("Core").SubItem(4), "Not Found");
  EXPECT_EQ(Icons(), "buildok buildok") << "what the run showed stays";
  EXPECT_TRUE(foreign.Checked());
  EXPECT_EQ(foreign.ImageOf(), Image::CheckReference);
  EXPECT_LE(marked, 4) << "once for the whole run";
  EXPECT_EQ(window.stbStatus.Get(), "Build Process finished");
  EXPECT_EQ(core.ImageOf(), Image::VbProject);
}

TEST_F(BuildRunTest, CountsNoQuestionAsTimeOfAProject) {
  Load({"Core"});
  platform.files.AddFile(kCore, "CompatibleMode=\"2\"\r\nMajorVer=9\r\n");
  program.options.VersionComponents = "1.0.0";
  const auto thinks = program.dialogs.answered.Connect(
      [&](const Message&, Answer) { platform.clock.elapsed += std::chrono::minutes(5); });
  std::chrono::milliseconds told{};
  const auto listening = program.run.events.Connect([&](const RunEvent& event) {
    if (const auto* compiled = std::get_if<ProjectCompiled>(&event)) told = compiled->duration;
  });
  EXPECT_EQ(Only(Build(), {"show"}).size(), 2U) << "a question, and the end";
  EXPECT_LT(told, std::chrono::minutes(1));
}

TEST_F(BuildRunTest, TakesEveryStepInItsOrder) {
  LoadShop();
  clsOptions& options = program.options;
  options.GetLatest = options.ChangeRefs = options.StopProcessing = options.AutoLaunchVBP = true;
  options.Compatible = false;
  options.DebugBuild = "True";
  options.VersionComponents = "1.2.4";
  options.AutoLaunchName = "C:\\Group\\Test.vbp";
  program.window.menu.mnuToolsInBox.checked.Set(true);
  dialogs.answers = {Answer::Yes};
  platform.events.onEvents = [&] { platform.journal.emplace_back("events"); };
  const std::string before = platform.files.Text(kShop);
  const std::string note = platform.programFolder + "\\gorbexbuilder.replaced";

  EXPECT_EQ(Build(),
            (Journal{"timer False",
                     "log Build Started",
                     "icon " + kCore + " vbproject",
                     "icon " + kShop + " vbproject",
                     "enabled mnuFileBuild False",
                     "pointer hourglass",
                     "text box ",
                     "icon " + kShop + " building",
                     "visible " + kShop,
                     "refresh",
                     "status Building " + kShop,
                     "log Getting latest " + kShop + " code",
                     "status Getting $/Shop",
                     "get $/Shop C:\\Work\\Shop 67248128",
                     "status Building " + kShop,
                     "log Breaking compatability on " + kShop,
                     "write " + kShop,
                     "write " + note,
                     "write " + kShop,
                     "write " + kShop,
                     "attributes " + kShop + " 32",
                     "write " + kShop,
                     "log Updating References on " + kShop,
                     "write " + kShop,
                     "write " + kShop,
                     "write " + kShop,
                     std::string("attributes ") + kResultLog + " 0",
                     std::string("remove ") + kResultLog,
                     std::string("start ") + kCompiler + " \"" + kShop + "\" /make /out \"" +
                         kResultLog + "\" /outdir \"C:\\Out\\\"",
                     "events",
                     "log Build was Succesfull",
                     "events",
                     "icon " + kShop + " buildok",
                     "write " + kShop,
                     "write " + kShop,
                     "remove " + note,
                     "enabled mnuFileGenScript True",
                     "show [YesNo Question GorbexBuilder] Built 1 components. Do you want to "
                     "auto-launch your VBP test project?",
                     std::string("start ") + kCompiler + " \"C:\\Group\\Test.vbp\" /run",
                     "events",
                     "status Build Process finished",
                     "enabled mnuFileBuild True",
                     "pointer default",
                     "log Build Finished succesfully.",
                     "timer True"}));

  const std::string oldGuid =
      before.substr(before.find('{'), before.find('}') - before.find('{') + 1);
  std::string compiled = With(With(before, "Mode=\"2\"", "Mode=\"0\""), oldGuid, "{NEW}");
  compiled = With(With(compiled, "OptimizationType=0", "OptimizationType=2"), "Info=1", "Info=-1");
  compiled = With(compiled, "RevisionVer=3", "RevisionVer=4") + "\r\n\r\n\r\n\r\n\r\n\r\n";
  ASSERT_EQ(compiledSources.size(), 2U);
  EXPECT_EQ(compiledSources[0], compiled);
  compiled = With(With(compiled, "OptimizationType=2", "OptimizationType=0"), "Info=-1", "Info=1");
  EXPECT_EQ(platform.files.Text(kShop), compiled + "\r\n\r\n");
}

TEST_F(BuildRunTest, AsksAboutCompatibilityOnlyWhenItMatters) {
  struct Case {
    bool changeRefs, isChecked;
    const char* column;
    std::optional<Answer> asked;
    bool inBox;
  };
  const Case cases[] = {{false, true, "NOT Compatible!", Answer::Yes, false},
                        {false, true, "NOT Compatible!", Answer::No, false},
                        {false, true, "NOT Compatible!", Answer::No, true},
                        {false, true, "Not Compatible", {}, true},
                        {false, false, "NOT Compatible!", {}, false},
                        {true, true, "NOT Compatible!", {}, true}};
  Load({"Core"});
  for (const Case& c : cases) {
    SCOPED_TRACE(&c - cases);
    program.window.menu.mnuToolsInBox.checked.Set(c.inBox);
    program.options.ChangeRefs = c.changeRefs;
    Row("Core").SetChecked(c.isChecked);
    Row("Core").SetSubItem(3, c.column);
    if (c.asked) dialogs.answers = {*c.asked};
    const Journal steps = Build();
    const std::string timer = std::string("timer ") + (c.inBox ? "True" : "False");
    EXPECT_EQ(steps.back(), timer);
    EXPECT_EQ(Only(steps, {"show [YesNo"}), c.asked ? Journal{kCompatibilityQuestion} : Journal{});
    if (c.asked == Answer::No) {
      EXPECT_EQ(steps, (Journal{"timer False", "log Build Started", "icon " + kCore + " vbproject",
                                kCompatibilityQuestion, timer}));
    } else {
      EXPECT_EQ(Only(steps, {"start"}).size(), c.isChecked ? 1U : 0U);
    }
  }
}

TEST_F(BuildRunTest, EndsWithWhatCameOfIt) {
  enum Asks : std::uint8_t { kNothing, kAtErrors, kToLaunch };
  const std::string failed = "show [OkCancel CriticalStop] Error Building " + kCore + " Continue?";
  const std::string offer =
      "show [YesNo Question GorbexBuilder] Built 3 components. Do you want to auto-launch your VBP "
      "test project?";
  struct Case {
    bool isChecked, fails;
    Asks asks;
    Answer answer;
    std::string told, icons;
    std::size_t components, starts;
  };
  const Case cases[] = {
      {true, true, kNothing, Answer::Ok, "show Errors during the build process",
       "buildok builderror buildok", 2, 3},
      {true, true, kAtErrors, Answer::Ok, failed, "buildok builderror buildok", 2, 3},
      {true, true, kAtErrors, Answer::Cancel, failed, "buildok builderror vbproject", 1, 2},
      {true, false, kNothing, Answer::Ok, "show Built 3 components.", "buildok buildok buildok", 3,
       3},
      {true, false, kToLaunch, Answer::No, offer, "buildok buildok buildok", 3, 3},
      {true, false, kToLaunch, Answer::Yes, offer, "buildok buildok buildok", 3, 4},
      {false, false, kToLaunch, Answer::Ok, "show No projects checked for build",
       "vbproject vbproject vbproject", 0, 0}};
  Load({"Base", "Core", "Top"});
  for (const Case& c : cases) {
    SCOPED_TRACE(&c - cases);
    program.options.StopProcessing = c.asks == kAtErrors;
    program.options.AutoLaunchVBP = c.asks == kToLaunch;
    for (const auto& row : program.window.lvwQueue.Rows()) row->SetChecked(c.isChecked);
    failing = c.fails ? "Core" : "";
    dialogs.answers = {c.answer};
    const Journal steps = Build();
    EXPECT_EQ(Only(steps, {"show"}), Journal{c.told});
    EXPECT_EQ(Icons(), c.icons);
    EXPECT_EQ(Only(steps, {"start"}).size(), c.starts);
    EXPECT_EQ(Only(steps, {"text box shown"}).size(), c.fails ? 1U : 0U);
    EXPECT_EQ(Only(steps, {"log"}).back(),
              std::string("log Build Finished ") + (c.fails ? "with errors." : "succesfully."));
    const std::string& script = program.window.registrationScript;
    EXPECT_EQ(CountOf(script, "\r\nCall KexrunTk.Execute("), c.components);
    EXPECT_EQ(CountOf(script, "\r\n"), c.components + 5);
    EXPECT_EQ(CountOf(program.window.txtLogFile.text.Get(), "Build of"), c.fails ? 1U : 0U);
  }
}

TEST_F(BuildRunTest, AsksForACompilerAndGoesOnWithout) {
  Load({"Core"});
  program.window.compilerPath.clear();
  program.window.registrationScript = "of the run before";
  const std::string chooser =
      "open Please enter path to Visual Basic executable file|Executables (*.exe)|*.exe|";
  EXPECT_EQ(Only(Build(), {"show", "open", "start", "log", "text box"}),
            (Journal{"log Build Started", "show You need to specify a VB path", chooser,
                     "show You must specify the VB path if you want to compile projects",
                     "show No projects checked for build", "log Build Finished succesfully."}));
  EXPECT_EQ(program.window.registrationScript, "of the run before");
  EXPECT_FALSE(program.window.menu.mnuFileGenScript.enabled.Get());

  dialogs.choices = {"D:\\VB6.EXE"};
  program.options.ChangeRefs = true;
  EXPECT_EQ(Only(Build(), {"log", "start"}),
            (Journal{"log Build Started", "log Updating References on " + kCore,
                     "start D:\\VB6.EXE \"" + kCore + "\" /make /out \"" + kResultLog +
                         "\" /outdir \"C:\\Out\\\"",
                     "log Build was Succesfull", "log Build Finished succesfully."}));
  EXPECT_TRUE(program.options.Compatible) << "the settings of this run stay";
}

TEST_F(BuildRunTest, GoesOnFromOldSourcesAndSaysWhichAndWhy) {
  const std::string opening =
      "show The latest sources of these projects were not got; they were built as they are:\r\n";
  const std::string both = Group::Path("Base") + "\r\n" + kCore + "\r\nReason: ";
  struct Case {
    std::function<void()> prepare;
    Journal told;
    std::string got;  ///< of each project: yes, no, or nothing to get
  };
  MemorySourceControl& database = platform.sourceControl;
  const Case cases[] = {
      {[] {},
       {opening + both +
        "No initialisation file of source control is known; name one at the login, or with the "
        "setting INIPath"},
       "nn-"},
      {[&] {
         program.window.IniPath = "srcsafe.ini";
         dialogs.LogsIn();
         database.outages = 1;
       },
       {"show Could not log in to source-safe\r\nThe server is gone",
        "show Source-Control will be disabled for this session",
        opening + both + "The server is gone"},
       "nn-"},
      {[&] {
         database.localSpecs = {{"$/Base", "C:\\Work\\Base"}, {"$/Core", "C:\\Work\\Core"}};
         database.failures[{"get", "$/Core"}] = "It is\nlocked";
         database.toDo = "Update the submodule";
       },
       {opening + kCore + "\r\nReason: It is\nlocked\r\nUpdate the submodule"},
       "yn-"},
      {[&] {
         database.failures.clear();
         database.toDo.clear();
       },
       {},
       "yy-"}};
  Load({"Base", "Core", "Top"});
  Bind("Base", "$/Base");
  Bind("Core", "$/Core");
  program.options.GetLatest = true;
  std::string got;
  const auto listening = program.run.events.Connect([&](const RunEvent& event) {
    const auto* latest = std::get_if<LatestGot>(&event);
    if (latest != nullptr) got += "y-n"[static_cast<int>(latest->result.kind)];
  });
  for (const Case& c : cases) {
    SCOPED_TRACE(&c - cases);
    c.prepare();
    got.clear();
    const Journal steps = Build();
    EXPECT_EQ(got, c.got);
    Journal told = c.told;
    told.emplace_back("show Built 3 components.");
    EXPECT_EQ(Only(steps, {"show"}), told);
    const Journal failures = Only(steps, {"log Failed to get latest"});
    EXPECT_EQ(std::ssize(failures), std::count(got.begin(), got.end(), 'n'));
    for (const auto& line : failures) EXPECT_EQ(line.find('\n'), std::string::npos) << line;
  }
}

}  // namespace
}  // namespace gorbex::test
