#include "tests/support/build_fixture.h"

namespace gorbex::test {
namespace {

using RegistrationScriptTest = BuildFixture;

TEST_F(RegistrationScriptTest, RegistersEachBuiltComponentInItsOrder) {
  Load({"Core", "Shop"});
  Build();
  EXPECT_EQ(program.window.registrationScript,
            "' VBScript Generated to automatically register built components\r\n"
            "Dim KexrunTk\r\nSet KexrunTk = CreateObject(\"Kexool.Kexool1.1\")\r\n"
            "Call KexrunTk.Execute(\"RegSvr32 C:\\Out\\Core.dll\"), True, False)\r\n"
            "Call KexrunTk.Execute(\"RegSvr32 C:\\Out\\Shop.dll\"), True, False)\r\n"
            "Set KexrunTK = nothing\r\n' End of Component registration\r\n");
}

TEST_F(RegistrationScriptTest, IsSavedWithOneLineBreakMore) {
  constexpr const char* kFile = "C:\\Group\\All.svb";
  const std::string chooser = "save Save VBScript File|VBScript Files (*.svb)|*.svb|*.svb";
  const std::string write = std::string("write ") + kFile;
  const auto generate = [&](std::optional<std::string> file) {
    dialogs.choices = {std::move(file)};
    program.script.mnuFileGenScript_Click();
    return Steps();
  };
  EXPECT_FALSE(program.window.menu.mnuFileGenScript.Execute());
  Load({"Core"});
  EXPECT_EQ(generate(kFile), (Journal{chooser, write, "status Script Saved"}));
  EXPECT_EQ(platform.files.Text(kFile), "\r\n");

  Build();
  EXPECT_EQ(generate(std::nullopt), (Journal{chooser, "status Cancelled"}));
  EXPECT_EQ(platform.files.Text(kFile), "\r\n");
  EXPECT_EQ(generate(kFile), (Journal{chooser, write, "status Script Saved"}));
  EXPECT_EQ(platform.files.Text(kFile), program.window.registrationScript + "\r\n");

  platform.files.Fail(FileOperation::Write, kFile, ErrorNumber::DiskFull);
  EXPECT_EQ(generate(kFile), (Journal{chooser, Reported(61, "Disk full: 'C:\\Group\\All.svb'",
                                                        ": frmBuilder.mnuFileGenScript_Click")}));
}

}  // namespace
}  // namespace gorbex::test
