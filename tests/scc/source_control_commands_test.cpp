#include "tests/support/build_fixture.h"

namespace gorbex::test {
namespace {

class SourceControlCommandsTest : public BuildFixture {
 protected:
  SourceControlCommandsTest() {
    Load({"Base", "Core", "Shop"});
    program.window.IniPath = "srcsafe.ini";
    dialogs.LogsIn();
  }

  void LogIn() {
    program.session.LoginToSourceSafe();
    Steps();
  }

  [[nodiscard]] TreeNode& Node(const std::string& name) {
    return program.window.tvwProjects.Item("x)" + Group::Path(name));
  }

  /// The projects marked as changed.
  [[nodiscard]] std::string Marked() {
    std::string names;
    for (const char* name : {"Base", "Core", "Shop"}) {
      if (Node(name).ImageOf() == Image::ProjectWarning) names.append(name).append(" ");
    }
    return names;
  }

  Journal Run(Command& entry) {
    Steps();
    entry.Execute();
    return Only(Steps(), {"show", "status", "log", "get", "checkout", "checkin", "label"});
  }

  MemorySourceControl& database = platform.sourceControl;
  MainMenu& menu = program.window.menu;
};

TEST_F(SourceControlCommandsTest, ScanMarksProjectsByTheFilesDirectlyInTheirFolders) {
  Bind("Base", "$/Base");
  Bind("Core", "$/Core");
  database.files = {{"$/Base/a.cls", {"new", "old"}},
                    {"$/Base/b.cls", {"1", "1"}},
                    {"$/Core/c.cls", {"1", "1"}},
                    {"$/Core/Sub/d.cls", {"new", "old"}},
                    {"$/Shop/e.cls", {"new", "old"}}};
  program.changes.mnuToolsHighlight_Click();
  EXPECT_EQ(Marked(), "Base ") << "it logs in by itself";
  Bind("Shop", "$/Shop");
  database.failures[{"differs", "$/Base/a.cls"}] = "gone";
  database.failures[{"items", "$/Core"}] = "offline";
  Journal passedOver;
  const auto listening =
      program.changes.notCompared.Connect([&](const std::string& path, const std::string& why) {
        passedOver = {path, why};
      });
  EXPECT_EQ(Run(menu.mnuToolsHighlight), (Journal{"status Checking for Project Changes..",
                                                  "status Finished scanning for changes"}));
  EXPECT_EQ(Marked(), "Base Shop ") << "a mark of an earlier scan stays";
  EXPECT_EQ(passedOver, (Journal{Group::Path("Core"), "offline"}));
  database.failures = {{{"type", "$/Base/a.cls"}, "no type"}, {{"type", "$/Base/b.cls"}, "none"}};
  std::optional<std::size_t> found;
  const auto scans =
      program.changes.scanned.Connect([&](const std::size_t& projects) { found = projects; });
  EXPECT_EQ(Run(menu.mnuToolsHighlight).back(), "status Finished scanning for changes");
  EXPECT_EQ(passedOver, (Journal{Group::Path("Base"), "no type"}));
  EXPECT_EQ(found, 1U) << "Shop, once more";
  EXPECT_EQ(program.window.mousePointer.Get(), MousePointer::Default);
}

TEST_F(SourceControlCommandsTest, GetsAllChangedOrSelectedProjects) {
  LogIn();
  for (const char* name : {"Base", "Core", "Shop"}) {
    Bind(name, std::string("$/") + name);
    database.files[std::string("$/") + name + "/a.cls"] = {"1", "1", "1"};
    Node(name).SetImage(Image::ProjectWarning);
  }
  database.failures[{"get", "$/Core"}] = "It is locked";
  const std::string got = " 67248128";
  EXPECT_EQ(
      Run(menu.mnuToolsGetLatestChanged),
      (Journal{"status Getting $/Base", "get $/Base C:\\Work\\Base" + got, "status Getting $/Core",
               "status It is locked", "status Changed projects now up to date"}));
  EXPECT_EQ(Marked(), "Core Shop ");

  const Journal all = Run(menu.mnuToolsGetLatestALL);
  EXPECT_EQ(all.size(), 10U) << "a failure does not stop the others";
  EXPECT_EQ(all.front(), "log Getting Latest for " + Group::Path("Base"));
  EXPECT_EQ(all.back(), "status Get completed");

  database.failures.clear();
  database.toDo = "Update the submodule";
  program.window.tvwProjects.Select(&Node("Core"));
  EXPECT_EQ(Run(menu.mnuTreePopupGetLatest).back(), "show Update the submodule");
  EXPECT_EQ(Marked(), "Shop ") << "whatever the result";

  program.buildProject.mnuFileNew_Click();
  EXPECT_EQ(Run(menu.mnuToolsGetLatestALL), Journal{"show No projects loaded"});
  EXPECT_EQ(Run(menu.mnuToolsGetLatestChanged),
            (Journal{"show No projects loaded", "status Changed projects now up to date"}));
  EXPECT_EQ(Run(menu.mnuToolsLabel), Journal{"show No Projects to Label!!"});
  program.window.fileName = "C:\\empty.bpf";
  EXPECT_EQ(Run(menu.mnuToolsGetLatestALL), Journal{"status Get completed"});
  EXPECT_EQ(Run(menu.mnuToolsGetLatestChanged), Journal{"status Changed projects now up to date"});
}

TEST_F(SourceControlCommandsTest, GetsNothingAfterACancelledLogin) {
  Bind("Core", "$/Core");
  dialogs.useLogin = [](frmLogin& form) { form.cmdCancel.Execute(); };
  LogIn();
  EXPECT_EQ(program.latest.GetLatestForProject(kCore).problem,
            "The login to source control was cancelled");
  EXPECT_EQ(program.window.stbStatus.Get(), "Failed GET : The database is not open");
}

TEST_F(SourceControlCommandsTest, LetsOneCommandWorkAtATime) {
  LogIn();
  Bind("Base", "$/Base");
  database.files["$/Base/a.cls"] = {"1", "1", "1"};
  int asked = 0;
  const auto acting = program.window.stbStatus.changed.Connect([&](const std::string& text) {
    if (text != "Getting $/Base" || asked++ > 0) return;
    for (Command* entry :
         {&menu.mnuToolsGetLatestALL, &menu.mnuToolsGetLatestChanged, &menu.mnuToolsHighlight,
          &menu.mnuToolsLabel, &menu.mnuTreePopupGetLatest, &menu.mnuDataPopupBrowse}) {
      entry->Execute();
    }
    EXPECT_FALSE(program.shutDown.Form_QueryUnload());
    EXPECT_FALSE(program.shutDown.Due());
  });
  dialogs.answers = {Answer::Yes};
  const Journal steps = Run(menu.mnuToolsGetLatestALL);
  EXPECT_EQ(std::count(steps.begin(), steps.end(), "status Source-Control is busy"), 6);
  EXPECT_EQ(Only(steps, {"show", "get"}),
            (Journal{"show [YesNo Question] Source-Control is busy. Do you wish to close when it "
                     "is done?",
                     "get $/Base C:\\Work\\Base 67248128"}));
  EXPECT_EQ(steps.back(), "status Get completed");
  EXPECT_TRUE(program.shutDown.Due());
}

TEST_F(SourceControlCommandsTest, LabelsWhatTheDatabaseKnows) {
  LogIn();
  Bind("Base", "$/Base");
  database.files["$/Core/a.cls"] = {"1", "1"};
  program.window.ProjectMembers.Remove(Group::Path("Core"));
  program.window.ProjectMembers.Remove(Group::Path("Shop"));
  dialogs.useLabel = [&](frmLabel& form) {
    EXPECT_EQ(form.txtVSSProject.text.Get(), "$/Base");
    EXPECT_FALSE(form.cmdOK.enabled.Get());
    form.txtLabel.text.Set("1.0");
    EXPECT_FALSE(form.cmdOK.enabled.Get());
    form.txtComment.text.Set("first");
    EXPECT_TRUE(form.cmdOK.enabled.Get());
    form.cmdOK.Execute();
    EXPECT_FALSE(form.hidden.Get());
    form.txtVSSProject.text.Set("$/Core");
    form.cmdOK.Execute();
    EXPECT_TRUE(form.hidden.Get());
    form.hidden.Set(false);
    form.cmdOK.Execute();
    form.txtLabel.text.Set("");
    EXPECT_TRUE(form.cmdOK.enabled.Get()) << "it looks at the comment alone";
    database.failures[{"item", "$/Core"}] = "offline";
    for (const Answer answer : {Answer::Abort, Answer::Ignore}) {
      dialogs.answers = {answer};
      form.cmdOK.Execute();
      EXPECT_FALSE(form.hidden.Get());
    }
  };
  EXPECT_EQ(
      Run(menu.mnuToolsLabel),
      (Journal{"show Invalid VSS Project", "label $/Core 1.0 first", "label $/Core 1.0 first",
               "show Failed to label : The label 1.0 exists already(0)",
               Reported(429, "offline", ": frmLabel.cmdOK_Click"),
               Reported(429, "offline", ": frmLabel.cmdOK_Click"), "show Invalid VSS Project"}));
}

TEST_F(SourceControlCommandsTest, BrowseRepointsAReferenceUnderCheckOut) {
  group.Library("User").Uses("Core");
  Load();
  Bind("User", "$/User");
  LogIn();
  const std::string user = Group::Path("User");
  program.display.ShowProjectReferences(user);
  ListView& list = program.window.lvwData;
  const std::string old = list.At(1).SubItem(2);
  const auto browse = [&] {
    list.Select(&list.At(1));
    dialogs.choices = {"D:\\New\\Core.dll"};
    return Run(menu.mnuDataPopupBrowse);
  };
  EXPECT_EQ(
      browse().back(),
      "show There is no item '$/User/User.vbp' in the database\r\nFailed to check-out & apply "
      "changes ");
  database.files["$/User/User.vbp"] = {"1", "1", "1"};
  platform.files.SetAttributes(user, file_attribute::kReadOnly);
  dialogs.answers = {Answer::Yes};
  EXPECT_EQ(
      browse(),
      (Journal{"show [YesNo Question] Attempt to override read-only attribute?",
               "status Checking out project " + user,
               "checkout $/User/User.vbp Builder Ref Changed", "log Checked Out " + user,
               "log Builder ammended ref " + old + " to D:\\New\\Core.dll",
               "checkin $/User/User.vbp Builder ammended ref " + old + " to D:\\New\\Core.dll",
               "status Project ammended OK"}));
  EXPECT_NE(platform.files.Text(user).find("#D:\\New\\Core.dll#"), std::string::npos);
  EXPECT_EQ(list.At(1).SubItem(2), "D:\\New\\Core.dll");
  const TreeNode& node = program.window.tvwProjects.Item("r-1" + user);
  EXPECT_NE(node.Text().find("#D:\\New\\Core.dll#"), std::string::npos);
  EXPECT_EQ(node.ImageOf(), Image::Dependancy);

  Bind("User", "");
  EXPECT_EQ(browse(), Journal{"status Could not check-out project, reference not changed"});
}

}  // namespace
}  // namespace gorbex::test
