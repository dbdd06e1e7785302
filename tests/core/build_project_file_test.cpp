#include "core/build_project_file.h"

#include "core/text.h"

#include "tests/support/program_fixture.h"
#include "tests/support/window_journal.h"

namespace gorbex::test {
namespace {

const std::string kSettings =
    "breakonerror=True\r\nchangerefs=False\r\nbuilddir=C:\\Group\\Bin\r\nchangerefs=False\r\n"
    "breakcompat=True\r\ngetonbuild=True\r\nversion=1.2.3\r\n";

class BuildProjectFileTest : public ProgramFixture {
 protected:
  bool Load(const std::string& text) {
    platform.files.AddFile("C:\\a.bpf", text);
    return program.buildProject.OpenProject("C:\\a.bpf");
  }
  std::string Queue() {
    std::string rows;
    for (const auto& row : program.window.lvwQueue.Rows()) {
      rows += row->Text() + (row->Checked() ? "*" : "") + row->Key() + "|" + row->SubItem(1) + "|" +
              row->SubItem(2) + "|" + row->SubItem(3) + "|" + row->SubItem(4) + "\n";
    }
    return rows;
  }
  std::string Recent() {
    std::string paths;
    for (const char* name : {"MRU1", "MRU2", "MRU3", "MRU4", "MRU5"}) {
      paths += platform.registry.Text(RegistryRoot::CurrentUser, kSettingsKey, name) + " ";
    }
    return paths;
  }
  /// The messages shown since the last call.
  Journal Messages() { return Only(Effects(), {"show"}); }
  static std::string LoadError(int number, const std::string& description) {
    return Reported(number, description, ": frmBuilder.LoadProject");
  }
};

TEST_F(BuildProjectFileTest, LoadingShowsRowsStatusAndLogAndSavingGivesTheSameBytes) {
  const auto core = group.Library("Core").Built().Line("CompatibleMode=\"2\"").Path();
  const auto app = group.Executable("App").Uses("Core").Path();
  const std::string text = "project=" + core + "\r\nproject=" + app + "\r\nqueue=*" + app + "," +
                           core + "\r\nqueue=" + core + ",\r\n" + kSettings;
  std::string status;
  const auto listening = program.window.stbStatus.changed.Connect(
      [&](const std::string& shown) { status += shown + "\n"; });
  ASSERT_TRUE(Load(text));
  EXPECT_EQ(Queue(), "1*" + app + "|" + app + "|" + core + "|NOT Compatible!|Not Found\n2" + core +
                         "|" + core + "||Compatible|01/03/1601 00:00\n");
  EXPECT_EQ(status,
            "Building to C:\\Group\\Bin\nScanning dependancies, please wait.\n"
            "Dependancy scan now complete.\n");
  EXPECT_EQ(platform.files.Text(program.log.FileOf("04032026")),
            "[04/03/2026 15:06:07] Opened Project C:\\a.bpf\r\n"
            "[04/03/2026 15:06:07] Scanning dependancies\r\n");
  EXPECT_EQ(program.window.caption.Get(), "GorbexBuilder [C:\\a.bpf]");

  program.window.ProjectChanged = true;
  program.window.menu.mnuFileSave.Execute();
  EXPECT_EQ(platform.files.Text("C:\\a.bpf"), text);
  EXPECT_EQ(program.window.stbStatus.Get(), "Saved OK");
  EXPECT_FALSE(program.window.ProjectChanged);
}

TEST_F(BuildProjectFileTest, LoadingOverridesOnlyWhatTheFileNames) {
  const clsOptions& options = program.options;
  const std::vector<std::pair<std::string, std::string>> cases = {
      {kSettings, "1.2.3 True False C:\\Group\\Bin False True"},
      {"version=DEFAULT\r\n", "1.2.3 True False C:\\Group\\Bin False True"},
      {"changerefs=False\r\nCHANGEREFS=1", "1.2.3 True True C:\\Group\\Bin False True"},
      {"\r\nbuilddir=x\r\nother=y", "1.2.3 True True C:\\Group\\Bin False True"},
      {"breakcompat=0\r\nversion=\r\nbuilddir=", " True True  True True"},
      {"getonbuild=0\r\nversion=2", "2 True True  True False"}};
  for (const auto& [text, state] : cases) {
    EXPECT_TRUE(Load(text));
    EXPECT_EQ(options.VersionComponents + " " + FlagText(options.StopProcessing) + " " +
                  FlagText(options.ChangeRefs) + " " + options.BuildPath + " " +
                  FlagText(options.Compatible) + " " + FlagText(options.GetLatest),
              state)
        << text;
    EXPECT_EQ(program.window.buildDirectory, options.BuildPath);
  }
}

TEST_F(BuildProjectFileTest, ErrorsAreReportedAtTheirLineAndAnswered) {
  const auto core = group.Library("Core").Path();
  const std::string flag = "project=" + core + "\r\nchangerefs=perhaps\r\nqueue=" + core + "\r\n";
  const std::string mismatch = LoadError(13, "Type mismatch: 'changerefs=perhaps'");
  const std::string missing = LoadError(5, "Invalid procedure call or argument: 'C:\\x.vbp'");
  const std::string twice = LoadError(35602, "Key is not unique in collection: '" + core + "'");
  const std::string coreRow = core + "|" + core + "||";
  const std::string state = "NOT Compatible!|Not Found\n";
  const auto expect = [&](const std::string& text, std::deque<Answer> answers,
                          const Journal& reports, const std::string& queue, bool loaded = true) {
    dialogs.answers = std::move(answers);
    EXPECT_EQ(Load(text), loaded) << text;
    EXPECT_EQ(Messages(), reports) << text;
    EXPECT_EQ(Queue(), queue) << text;
    EXPECT_EQ(program.window.ProjectMembers.Count(), 1U) << text;
    EXPECT_EQ(program.window.caption.Get(), loaded ? "GorbexBuilder [C:\\a.bpf]" : "GorbexBuilder");
  };
  const std::string project = "project=" + core + "\r\n";
  platform.files.AddFile("C:\\x.vbp", "Type=Exe\r\n");
  expect(flag, {Answer::Abort}, {mismatch}, "", false);
  expect(flag, {Answer::Retry, Answer::Ignore}, {mismatch, mismatch}, "1" + coreRow + state);
  expect("queue=C:\\x.vbp\r\n" + project + "queue=" + core, {Answer::Ignore}, {missing},
         "1C:\\x.vbp|C:\\x.vbp|||\n2" + coreRow + state);
  expect(project + "queue=*" + core + ",a,b\r\nqueue=" + core, {Answer::Ignore}, {twice},
         "1*" + core + "|" + core + "|a,b|" + state);
  expect(project + project, {}, {}, "");
}

TEST_F(BuildProjectFileTest, RefusesWhatWouldLoadAsAnEmptyBuildProject) {
  ASSERT_TRUE(Load("project=" + group.Library("Core").Path() + "\r\n"));
  const std::string has = "; a build project file has ";
  const std::vector<std::pair<std::string, std::string>> cases = {
      {"project=C:\\x\nversion=1\n", "its lines end with LF only" + has + "CR LF"},
      {"project=C:\\x\rversion=1\r", "its lines end with CR only" + has + "CR LF"},
      {"\xEF\xBB\xBFproject=C:\\x\r\n", "it begins with a UTF-8 byte order mark" + has + "none"},
      {std::string("project=\0", 9), "no build project file"},
      {"notes\r\n", "no build project file"}};
  for (const auto& [text, problem] : cases) {
    EXPECT_FALSE(Load(text));
    EXPECT_EQ(Messages(), Journal{"show [Ok Exclamation] C:\\a.bpf is not opened: " + problem});
    EXPECT_EQ(program.window.ProjectMembers.Count(), 1U);
  }
  dialogs.answers = {Answer::Ignore};
  EXPECT_FALSE(program.buildProject.OpenProject("C:\\none.bpf")) << "nothing to go on with";
  EXPECT_EQ(program.window.ProjectMembers.Count(), 1U);
}

TEST_F(BuildProjectFileTest, TellsOnceOfProjectsThatAreNotSoundAndAsksBeforeTheyAreDropped) {
  const auto core = group.Library("Core").Path();
  platform.files.AddFile("C:\\lf.vbp", "Type=Exe\nName=x\n");
  Journal told;
  const auto listening =
      program.findings.told.Connect([&](const std::string& text) { told.push_back(text); });
  const std::string whole =
      "project=" + core + "\r\nproject=C:\\lf.vbp\r\nproject=C:\\bare.vbp\r\n";
  platform.files.AddFile("C:\\bare.vbp", "Type=Exe\r\n");
  const auto load = [&] {
    platform.files.Fail(FileOperation::Read, "C:\\bare.vbp", ErrorNumber::PermissionDenied);
    return Load(whole);
  };
  ASSERT_TRUE(load());
  EXPECT_EQ(told, Journal{"These projects could not be read and are left out:\r\n"
                          "C:\\bare.vbp: Permission denied: 'C:\\bare.vbp'\r\n\r\n"
                          "The compiler will not load these projects:\r\nC:\\lf.vbp: its lines "
                          "end with LF only; the compiler wants CR LF\r\n\r\n"});
  const std::string question =
      "show [YesNo Exclamation] These projects could not be read and would be lost from the file:"
      "\r\nC:\\bare.vbp\r\n\r\nDo you wish to save without them?";
  auto& menu = program.window.menu;
  menu.mnuFileSave.Execute();
  EXPECT_EQ(Messages(), Journal{question});
  EXPECT_EQ(platform.files.Text("C:\\a.bpf"), whole);
  EXPECT_EQ(program.window.stbStatus.Get(), "Not Saved");
  dialogs.answers = {Answer::Yes};
  menu.mnuFileSave.Execute();
  menu.mnuFileSave.Execute();
  EXPECT_EQ(Messages(), Journal{question}) << "they are gone now";

  ASSERT_TRUE(load());
  dialogs.choices = {"C:\\lf.vbp", "C:\\bare.vbp"};
  menu.mnuTreePopupAddProject.Execute();
  menu.mnuTreePopupAddProject.Execute();
  Messages();
  menu.mnuFileSave.Execute();
  EXPECT_EQ(Messages(), Journal{}) << "it is there again";
}

TEST_F(BuildProjectFileTest, AsksOnceAboutMissingProjectsAndKeepsOrRemovesThem) {
  const auto core = group.Library("Core").Path();
  const std::string rows = "queue=C:\\a.vbp,\r\nqueue=*" + core + ",\r\nqueue=*C:\\b.vbp,\r\n";
  const std::string found = "project=" + core + "\r\n";
  const std::string whole = found + "project=C:\\a.vbp\r\n" + rows + kSettings;
  const Journal question = {
      "show [YesNo Exclamation] These project files are missing:\r\nC:\\a.vbp\r\nC:\\b.vbp\r\n\r\n"
      "Do you wish to remove them from the build project?"};
  for (const Answer keeps : {Answer::No, Answer::Cancel}) {
    dialogs.answers = {keeps};
    ASSERT_TRUE(Load(whole));
    EXPECT_EQ(Messages(), question);
    EXPECT_EQ(program.window.lvwQueue.Count(), 3U);
    EXPECT_FALSE(program.buildProject.Changed());
    program.window.menu.mnuFileSave.Execute();
    EXPECT_EQ(Messages(), Journal{});
    EXPECT_EQ(platform.files.Text("C:\\a.bpf"), whole);
  }
  dialogs.answers = {Answer::Yes};
  ASSERT_TRUE(Load(whole));
  EXPECT_EQ(Messages(), question);
  EXPECT_EQ(Queue(), "1*" + core + "|" + core + "||NOT Compatible!|Not Found\n");
  EXPECT_TRUE(program.buildProject.Changed());
  program.window.menu.mnuFileSave.Execute();
  EXPECT_EQ(platform.files.Text("C:\\a.bpf"), found + "queue=*" + core + ",\r\n" + kSettings);
}

TEST_F(BuildProjectFileTest, UnreadableFileKeepsWhatIsOpenAndUnwritableOneTheTitle) {
  ASSERT_TRUE(Load("project=" + group.Library("Core").Path()));
  EXPECT_FALSE(program.buildProject.OpenProject("C:\\none.bpf"));
  EXPECT_FALSE(program.buildProject.OpenProject("C:\\Group"));
  EXPECT_EQ(Messages(), (Journal{LoadError(53, "File not found: 'C:\\none.bpf'"),
                                 LoadError(75, "Path/File access error: 'C:\\Group'")}));
  EXPECT_EQ(program.window.ProjectMembers.Count(), 1U);

  program.window.ProjectChanged = true;
  EXPECT_FALSE(program.buildProject.SaveProject("C:\\none\\b.bpf"));
  EXPECT_EQ(Messages(),
            Journal{Reported(76, "Path not found: 'C:\\none\\b.bpf'", ": frmBuilder.SaveProject")});
  EXPECT_EQ(program.window.caption.Get(), "GorbexBuilder [C:\\a.bpf]");
  EXPECT_TRUE(program.window.ProjectChanged);
}

TEST_F(BuildProjectFileTest, OffersToSaveWhateverWouldBeLost) {
  const auto core = group.Library("Core").Path();
  const std::string text = "project=" + core + "\r\nqueue=*" + core + ",\r\n" + kSettings;
  frmBuilder& window = program.window;
  MainMenu& menu = window.menu;
  const std::vector<std::function<void()>> changes = {
      [&] { menu.mnuQueueUnMarkAll.Execute(); },
      [&] { menu.mnuQueueEmpty.Execute(); },
      [&] { program.options.Compatible = true; },
      [&] { program.options.BuildPath = "D:\\"; },
      [&] { program.options.VersionComponents = "9.9.9"; },
      [&] { window.ProjectChanged = true; }};
  const std::string question = "show [YesNo Question] Save your Builder project?";
  for (const auto& change : changes) {
    ASSERT_TRUE(Load(text));
    EXPECT_FALSE(program.buildProject.Changed());
    change();
    EXPECT_TRUE(program.buildProject.Changed());
    for (Command* command : {&menu.mnuFileNew, &menu.mnuFileOpen, &menu.mnuFileMRU[0]}) {
      dialogs.answers = {Answer::Cancel};
      command->Execute();
      EXPECT_EQ(Messages(), Journal{question});
      EXPECT_EQ(window.ProjectMembers.Count(), 1U) << "it stays open";
    }
    dialogs.answers = {Answer::Yes};
    menu.mnuFileNew.Execute();
    EXPECT_EQ(Messages(), Journal{question});
    EXPECT_EQ(window.ProjectMembers.Count(), 0U);
    EXPECT_FALSE(program.buildProject.Changed());
  }
  EXPECT_EQ(platform.files.Text("C:\\a.bpf"), text) << "the last change is not in the file";
}

TEST_F(BuildProjectFileTest, ANewOneIsMadeOfAGroupOrFolder) {
  group.Library("Money").Uses("Core");
  group.Library("Core").Uses("Money");
  const std::string lineFeeds = "C:\\Group\\Lf.vbp";
  const std::string text = "Type=Exe\nName=\"Lf\"\n";
  platform.files.AddFile(lineFeeds, text);
  program.window.buildDirectory = "C:\\Other\\";
  program.options.VersionComponents = "9.9.9";
  const auto make = [&](const std::string& source, std::deque<Answer> answers) {
    dialogs.choices = {source};
    dialogs.answers = std::move(answers);
    platform.files.AddFile(lineFeeds, text);
    Effects();
    program.window.menu.mnuFileNewFrom.Execute();
    return program.window.stbStatus.Get() + " " + std::to_string(program.window.lvwQueue.Count());
  };
  EXPECT_EQ(make("C:\\Group", {Answer::Cancel}), "Cancelled 0");
  EXPECT_EQ(make("C:\\Group", {Answer::Yes}), "3 projects queued 3");
  EXPECT_EQ(program.window.lvwQueue.Selected(), &program.window.lvwQueue.At(1));
  EXPECT_EQ(platform.files.Text(lineFeeds), "Type=Exe\r\nName=\"Lf\"\r\n");
  EXPECT_TRUE(program.buildProject.Changed());
  EXPECT_EQ(program.options.BuildPath + program.options.VersionComponents, "");
  EXPECT_TRUE(program.options.Compatible);
  const std::string circle = "in a circle: " + Group::Path("Core") + ", " + Group::Path("Money");
  EXPECT_TRUE(Effects().back().ends_with(circle));
  // The open build project is offered for saving first, and stays open when nothing else is found.
  EXPECT_EQ(make("C:\\Group", {Answer::Cancel}), "3 projects queued 3");
  platform.files.AddFile("C:\\none.vbg", "VBGROUP 5.0\r\n");
  EXPECT_EQ(make("C:\\none.vbg", {Answer::No}), "3 projects queued 3");
  EXPECT_EQ(Effects().back(), "show [Ok Exclamation] C:\\none.vbg: no projects found");
  EXPECT_EQ(make("C:\\gone.vbg", {Answer::No}), "Cancelled 3") << "asked again, nothing was chosen";
  const Journal told = Effects();
  EXPECT_EQ(told.at(told.size() - 2), "show [Ok Exclamation] C:\\gone.vbg: no such file or folder");
}

TEST_F(BuildProjectFileTest, RecentFilesMoveDownAndCanHoldAPathTwice) {
  const std::vector<std::pair<std::string, std::string>> saves = {
      {"C:\\1", "C:\\1    <absent> "},           {"C:\\1", "C:\\1    <absent> "},
      {"C:\\2", "C:\\2 C:\\1   <absent> "},      {"C:\\3", "C:\\3 C:\\2 C:\\1  <absent> "},
      {"c:\\1", "c:\\1 C:\\3 C:\\2  <absent> "}, {"C:\\3", "C:\\3 c:\\1 C:\\2 C:\\2 <absent> "}};
  for (const auto& [path, recent] : saves) {
    ASSERT_TRUE(program.buildProject.SaveProject(path));
    EXPECT_EQ(Recent(), recent);
  }
  Messages();
  const std::string tooLong = "C:\\" + std::string(252, 'x');
  ASSERT_TRUE(program.buildProject.SaveProject(tooLong));
  EXPECT_EQ(Messages(), Journal{"show The file is saved, but not listed as a recent one: its path "
                                "is longer than 254 characters, the most that can be stored"});
  EXPECT_EQ(Recent(), saves.back().second);
  auto& menu = program.window.menu;
  EXPECT_EQ(menu.mnuFileMRU[1].caption.Get(), "c:\\1");
  menu.mnuFileMRU[1].Execute();
  EXPECT_EQ(program.window.caption.Get(), "GorbexBuilder [c:\\1]");
}

TEST_F(BuildProjectFileTest, MenuCommandsAskForFilesAndTellTheOutcome) {
  auto& menu = program.window.menu;
  ASSERT_TRUE(Load("project=" + group.Library("Core").Path()));
  menu.mnuFileNew.Execute();
  EXPECT_EQ(program.window.caption.Get(), "GorbexBuilder");
  EXPECT_EQ(program.window.ProjectMembers.Count() + NodesOf(program.window.tvwProjects).size(), 1U);
  Effects();
  menu.mnuFileOpen.Execute();
  EXPECT_EQ(program.window.stbStatus.Get(), "Cancelled");
  menu.mnuFileSave.Execute();
  EXPECT_EQ(program.window.stbStatus.Get(), "Not Saved");
  EXPECT_EQ(Effects(), (Journal{"open Select a Build Project to load|Builder Project Files "
                                "(*.bpf)|*.bpf|*.bpf",
                                "save |Builder Projects (*.bpf)|*.bpf|Untitled.bpf"}));
  dialogs.choices = {"C:\\b.bpf"};
  menu.mnuFileSaveAs.Execute();
  EXPECT_EQ(program.window.stbStatus.Get(), "Saved OK");
  EXPECT_EQ(platform.files.Text("C:\\b.bpf"),
            "breakonerror=False\r\nchangerefs=False\r\nbuilddir=\r\nchangerefs=False\r\n"
            "breakcompat=True\r\ngetonbuild=False\r\nversion=\r\n");
}

}  // namespace
}  // namespace gorbex::test
