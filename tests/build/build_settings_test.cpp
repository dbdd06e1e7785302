#include "core/options_form.h"
#include "tests/support/build_fixture.h"

namespace gorbex::test {
namespace {

class BuildSettingsTest : public BuildFixture {
 protected:
  Journal Run(Command& entry) {
    entry.Execute();
    return Only(Steps(), {"folder", "input", "open", "status", "interval", "show"});
  }
  MainMenu& menu = program.window.menu;
  clsOptions& options = program.options;
};

TEST_F(BuildSettingsTest, TakesABuildFolderAndAVersionOrKeepsWhatThereIs) {
  const std::string folder = "folder Please specify a destination path";
  dialogs.choices = {"D:\\New", std::nullopt, "", "D:\\"};
  EXPECT_EQ(Run(menu.mnuToolsBuildPath), (Journal{folder, "status Building to D:\\New\\"}));
  for (int i = 0; i < 3; ++i) EXPECT_EQ(Run(menu.mnuToolsBuildPath), Journal{folder});
  EXPECT_EQ(program.window.buildDirectory, "D:\\New\\");
  dialogs.choices = {"1.2", std::nullopt, "3"};
  for (const std::string before : {"", "1.2", "1.2"}) {
    EXPECT_EQ(Run(menu.mnuToolsVersion),
              Journal{"input Enter version number for components in this build (x.x.x).\r\n"
                      "Enter nothing for project default version.|" +
                      before});
  }
  EXPECT_EQ(options.VersionComponents, "");
}

TEST_F(BuildSettingsTest, ShowsAndAppliesEachSettingInItsControl) {
  auto& o = options;
  bool* const flags[] = {&o.GetLatest,     &o.AutoStart,          &o.Compatible,
                         &o.ChangeRefs,    &o.AutoBuildDependant, &o.StopProcessing,
                         &o.AutoLaunchVBP, &o.SkipUsersOfFailed};
  for (std::size_t i = 0; i < std::size(flags); ++i) *flags[i] = i % 2 == 0;
  options.ReplyUser = "a", options.BuildPath = "b", options.AutoLaunchName = "c",
  options.Editor = "d";
  options.DebugBuild = "TRUE", options.ReplyTo = 1;
  dialogs.useOptions = [&](frmOptions& form) {
    CheckBox* const boxes[] = {
        &form.chkGetLatest,     &form.chkAutoStart,    &form.chkCompatability, &form.chkChangeRefs,
        &form.chkAutoDependant, &form.chkStopOnErrors, &form.chkAutoLaunchVBP, &form.chkSkipUsers};
    for (std::size_t i = 0; i < std::size(boxes); ++i) {
      EXPECT_EQ(boxes[i]->value.Get(), i % 2 == 0);
      boxes[i]->value.Set(!*flags[i]);
      EXPECT_TRUE(form.cmdApply.Execute() && !form.cmdApply.enabled.Get());
      EXPECT_EQ(boxes[i]->value.Get(), *flags[i]);
    }
    EXPECT_TRUE(form.chkDebug.value.Get() && form.optReply.Get() == 1);
    form.chkDebug.value.Set(false);
    form.optReply.Set(0);
    form.txtErrorUser.text.Set(form.txtErrorUser.text.Get() + "+");
    form.txtBuildPath.text.Set(form.txtBuildPath.text.Get() + "+");
    form.txtEditor.text.Set("ed.cmd");
    form.cmdOK.Execute();
    EXPECT_TRUE(!form.closed.Get() && o.Editor == "d");
    form.txtEditor.text.Set("d+");
    form.txtVBPName.text.Set(form.txtVBPName.text.Get() + "+");
    form.txtInterval.text.Set("90");
    form.cmdOK.Execute();
    EXPECT_TRUE(form.closed.Get());
    form.txtBuildPath.text.Set("left without applying");
  };
  EXPECT_EQ(Run(menu.mnuToolsBuildOptions),
            (Journal{"show [Ok Exclamation] The editor cannot be used: a batch file; name the "
                     "program that it starts",
                     "interval 60000"}));
  EXPECT_EQ(program.window.buildDirectory, "b+");
  options.LoadSettings();
  EXPECT_EQ(options.ReplyUser + options.BuildPath + options.AutoLaunchName + options.Editor,
            "a+b+c+d+");
  EXPECT_EQ(options.DebugBuild + std::to_string(options.Interval + options.ReplyTo), "False60");
}

TEST_F(BuildSettingsTest, LetsTheDialogFollowItsControls) {
  dialogs.choices = {std::nullopt, "C:\\Out", std::nullopt, "C:\\T.vbp"};
  dialogs.useOptions = [](frmOptions& form) {
    for (const std::size_t page : {1U, 2U, 0U}) {
      form.keyDown.Emit({KeyCode::Tab, true, false, false});
      form.keyDown.Emit({KeyCode::Tab, true, true, false});
      for (std::size_t i = 0; i < 3; ++i) EXPECT_EQ(form.picOptions.at(i).Get(), i == page);
    }
    EXPECT_FALSE(form.cmdBrowseVBP.Execute() || form.txtVBPName.enabled.Get());
    form.chkAutoLaunchVBP.value.Set(true);
    EXPECT_TRUE(form.cmdApply.Execute() && form.txtVBPName.enabled.Get());
    for (Command* browse : {&form.cmdBrowse, &form.cmdBrowseVBP}) {
      browse->Execute();
      EXPECT_FALSE(form.cmdApply.enabled.Get());
      browse->Execute();
      EXPECT_TRUE(form.cmdApply.Execute());
    }
    form.txtInterval.text.Set("1e11");
    form.cmdOK.Execute();
  };
  const std::string out = "folder Please select Build Folder";
  const std::string vbp = "open Please select a VB Project to load|VB Projects (*.vbp)|*.vbp|*.vbp";
  const std::string error = Reported(6, "Overflow", ": frmOptions.cmdApply_Click");
  EXPECT_EQ(Run(menu.mnuToolsBuildOptions), (Journal{out, out, vbp, vbp, error, "interval 0"}));
  EXPECT_EQ(options.BuildPath + options.AutoLaunchName, "C:\\Out\\C:\\T.vbp");
}

}  // namespace
}  // namespace gorbex::test
