#include "tests/support/build_fixture.h"

namespace gorbex::test {
namespace {

const std::string kFileQuestion = "open Open SourceSafe database|INI FIles (*.ini)|*.ini|*.ini";

class SourceSafeSessionTest : public BuildFixture {
 protected:
  Journal Login() {
    program.session.LoginToSourceSafe();
    return Steps();
  }

  [[nodiscard]] std::string Enabled() {
    std::string names;
    MainMenu& menu = program.window.menu;
    for (const Command* entry : {&menu.mnuToolsLogin, &menu.mnuToolsLabel, &menu.mnuToolsHighlight,
                                 &menu.mnuToolsGetLatest}) {
      if (entry->enabled.Get()) names += entry->Name().substr(8) + " ";
    }
    return names;
  }
};

TEST_F(SourceSafeSessionTest, AsksForTheFileThenForTheUserUntilTheDatabaseOpens) {
  EXPECT_EQ(Login(), Journal{kFileQuestion}) << "cancelled: nothing was attempted";
  EXPECT_EQ(Enabled(), "Login ");

  program.window.UserName = "me";
  dialogs.choices = {"C:\\srcsafe.ini"};
  const std::pair<std::string, std::string> opening("open", "C:\\srcsafe.ini");
  platform.sourceControl.failures[opening] = "Bad password";
  dialogs.useLogin = [&](frmLogin& form) {
    int wanted = 0;
    const auto listening = form.passwordWanted.Connect([&] { ++wanted; });
    form.activated.Emit();
    EXPECT_EQ(wanted, 1) << "the user is known already";
    EXPECT_EQ(form.txtUserName.text.Get(), "me");
    form.txtPassword.text.Set("wrong");
    form.cmdOK.Execute();
    EXPECT_EQ(wanted, 2);
    EXPECT_FALSE(form.hidden.Get());
    program.session.LoginToSourceSafe();
    program.window.menu.mnuToolsLogin.Execute();
    platform.sourceControl.failures.erase(opening);
    form.txtUserName.text.Set("you");
    form.txtPassword.text.Set("right");
    form.cmdOK.Execute();
    EXPECT_TRUE(form.hidden.Get());
  };
  EXPECT_EQ(Only(Login(), {"open", "show", "status"}),
            (Journal{kFileQuestion, "show Could not log in to source-safe\r\nBad password",
                     "open C:\\srcsafe.ini you", "status Logged into VSS Successfully"}));
  EXPECT_EQ(program.window.UserName, "you");
  EXPECT_EQ(Enabled(), "Label Highlight GetLatest ");
  EXPECT_EQ(Login(), Journal{}) << "open for the rest of the run";
}

TEST_F(SourceSafeSessionTest, StaysOffForTheRunAfterCancel) {
  program.window.IniPath = "C:\\srcsafe.ini";
  dialogs.useLogin = nullptr;
  // A login is refused while the message about switched-off source control is shown.
  const auto meanwhile = program.dialogs.answered.Connect([&](const Message&, Answer) {
    dialogs.LogsIn();
    program.session.LoginToSourceSafe();
    program.window.menu.mnuToolsLogin.Execute();
  });
  EXPECT_EQ(Only(Login(), {"login", "show", "status"}),
            (Journal{"show Source-Control will be disabled for this session",
                     "status ERROR Logging into source-safe"}));
  dialogs.useLogin = [](frmLogin& form) { form.cmdCancel.Execute(); };
  EXPECT_EQ(Only(Login(), {"show", "open"}).size(), 1U) << "closed some other way: asked again";
  EXPECT_EQ(Login(), Journal{});
  dialogs.choices = {"C:\\other.ini"};
  program.window.menu.mnuToolsLogin.Execute();
  EXPECT_EQ(Steps(), Journal{kFileQuestion});
  EXPECT_EQ(program.window.IniPath, "C:\\other.ini");
}

}  // namespace
}  // namespace gorbex::test
