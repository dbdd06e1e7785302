#include "core/editor.h"

#include "core/editor_call.h"
#include "tests/support/build_fixture.h"

namespace gorbex::test {
namespace {

class EditorTest : public BuildFixture {
 protected:
  /// The last thing that happened.
  [[nodiscard]] std::string Last() {
    const Journal steps = Effects();
    return steps.empty() ? "" : steps.back();
  }
};

TEST(EditorCall, KeepsAFileInItsOneArgument) {
  struct Case {
    std::string setting;
    std::string file;
    std::string call;
  };
  const Case cases[] = {
      {"code --goto %FILE%:%LINE%", "/home/a b/c.cls", "code|--goto|/home/a b/c.cls:7"},
      {"\"C:\\Program Files\\ed.exe\" -n%LINE% \"%FILE%\"", "C:\\a \"b\" %LINE%.cls",
       "C:\\Program Files\\ed.exe|-n7|C:\\a \"b\" %LINE%.cls"},
      {"  gedit", "C:\\x & calc.cls", "gedit|C:\\x & calc.cls"},
      {"\"ed\" \"-e %FILE%\" %LINE", "$(x);`y`", "ed|-e $(x);`y`|%LINE"}};
  for (const Case& each : cases) {
    const EditorCall call = EditorCallOf(each.setting, each.file, 7);
    std::string text = call.program;
    for (const std::string& argument : call.arguments) text += "|" + argument;
    EXPECT_EQ(text, each.call);
  }
  for (const char* bad : {"code.cmd %FILE%", "\"C:\\a b\\x.BAT. \" %FILE%", "\"ed %FILE%", "%FILE%",
                          "\"%FILE%\" ed", "\"\" %FILE%", "ed\n%FILE%"}) {
    EXPECT_THROW(static_cast<void>(EditorCallOf(bad, "f", 1)), RuntimeError) << bad;
  }
}

TEST_F(EditorTest, OpensFailureAfterFailureAndTellsWhyNot) {
  for (const char* name : {"Base", "Else"}) group.Library(name).Line("CompatibleMode=\"2\"");
  group.Library("Core").Uses("Base").Line("CompatibleMode=\"2\"");
  Load();
  program.options.SkipUsersOfFailed = true;
  program.options.Editor = "ed %FILE%:%LINE%";
  platform.files.AddFile("C:\\x.cls", "Attribute VB_Name = \"x\"\r\nOption Explicit\r\n\r\nNext");
  const std::string log = "Compile Error in File 'C:\\x.cls', Line 2 : Next without For\r\n";
  for (const std::string& each : {log, std::string("'A.OCX' could not be loaded")}) {
    platform.processes.Queue([this, each](const std::string&) {
      platform.files.AddFile(kResultLog, each);
      return 1U;
    });
  }
  MainMenu& menu = program.window.menu;
  EXPECT_FALSE(menu.mnuWindowNextFailure.IsPossible());
  Build();
  ASSERT_EQ(program.failed.All().size(), 3U);
  const std::string first = "start ed|C:\\x.cls:4";
  const std::string second = "start ed|" + Group::Path("Else") + ":1";
  for (const std::string& expected : {first, second, first}) {
    menu.mnuWindowNextFailure.Execute();
    EXPECT_EQ(Last(), expected);
  }
  menu.mnuWindowPreviousFailure.Execute();
  EXPECT_EQ(Last(), second) << "the one before the first is the last";
  program.failureSteps.Open(kCore);
  EXPECT_EQ(Last(), "start ed|" + kCore + ":1") << "it was skipped";

  platform.processes.QueueRefusal(RuntimeError(ErrorNumber::FileNotFound, "ed"));
  menu.mnuWindowNextFailure.Execute();
  EXPECT_NE(Last().find("The editor cannot be started: File not found: 'ed'"), std::string::npos);
  program.options.Editor = " ";
  menu.mnuWindowNextFailure.Execute();
  EXPECT_NE(Last().find("The system cannot show the file "), std::string::npos);
  program.editor.openBySystem = [](const std::string&) { return true; };
  program.editor.Open("C:\\Core\\Setup.exe", 1);
  EXPECT_NE(Last().find("The system might run C:\\Core\\Setup.exe"), std::string::npos);
}

}  // namespace
}  // namespace gorbex::test
