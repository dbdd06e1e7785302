#include "tests/support/program_fixture.h"

namespace gorbex::test {
namespace {

using LogViewerTest = ProgramFixture;

TEST_F(LogViewerTest, ShowsTheLogOfADayAsItIsWhenChosen) {
  const std::string folder = platform.programFolder + "\\Logs\\";
  frmLogs& form = program.logs;
  const auto open = [&] {
    program.window.menu.mnuWindowViewLogs.Execute();
    EXPECT_TRUE(form.visible.Get() && form.txtLog.text.Get().empty());
    return form.cboLogDate.items.Get();
  };
  const auto choose = [&](std::size_t item) {
    form.cboLogDate.selected.Set(item);
    return form.txtLog.text.Get();
  };
  EXPECT_TRUE(open().empty());
  for (const char* name : {"Notes.LOG", "old.log.txt", "log", "Kept.log\\x"}) {
    platform.files.AddFile(folder + name, name);
  }
  program.log.WriteLog("one", false);
  EXPECT_EQ(open(), (std::vector<std::string>{"04032026", "Notes"}));
  EXPECT_EQ(choose(1) + choose(0), "Notes.LOGone\r\n");
  program.log.WriteLog("two", false);
  EXPECT_EQ(choose(0), "one\r\ntwo\r\n");
  platform.files.Remove(folder + "04032026.log");
  EXPECT_EQ(choose(0), "Error loading logfile :File not found: '" + folder + "04032026.log'");
  EXPECT_EQ(open(), std::vector<std::string>{"Notes"});
  EXPECT_TRUE(form.cmdClose.Execute() && !form.visible.Get());
}

}  // namespace
}  // namespace gorbex::test
