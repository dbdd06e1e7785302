#include "core/activity_log.h"

#include "tests/support/program_fixture.h"

namespace gorbex::test {
namespace {

using ActivityLogTest = ProgramFixture;

TEST_F(ActivityLogTest, LogKeepsOneFilePerDayInAFolderItMakes) {
  program.log.WriteLog("last");
  platform.clock.now = {2026, 12, 31, 23, 59, 59};
  program.log.WriteLog("bare", false);
  platform.clock.now = {2027, 1, 1, 0, 0, 0};
  program.log.WriteLog("first");
  Journal expected = {"mkdir " + platform.programFolder + "\\logs"};
  for (const auto& [name, text] : {std::pair("04032026.log", "[04/03/2026 15:06:07] last\r\n"),
                                   {"31122026.log", "bare\r\n"},
                                   {"01012027.log", "[01/01/2027 00:00:00] first\r\n"}}) {
    expected.push_back("append " + platform.programFolder + "\\Logs\\" + name);
    EXPECT_EQ(platform.files.Text(platform.programFolder + "\\Logs\\" + name), text);
  }
  EXPECT_EQ(Effects(), expected);
}

TEST_F(ActivityLogTest, LogFolderIsMadeUnderItsOtherNameAndALostLineIsTold) {
  ActivityLog log(platform.files, platform.clock, dialogs, "C:\\");
  platform.files.Fail(FileOperation::CreateFolder, "C:\\\\logs", ErrorNumber::PermissionDenied);
  log.WriteLog("lost");
  log.WriteLog("x");
  const std::string denied = "Permission denied: 'C:\\\\logs'";
  EXPECT_EQ(Effects(), (Journal{"show Failed to write to log-file :" + denied, "mkdir C:\\\\logs",
                                "append C:\\Logs\\04032026.log"}));
}

using LogViewerTest = ProgramFixture;

TEST_F(LogViewerTest, ShowsTheLogOfADayAsItIsWhenChosen) {
  const std::string folder = platform.programFolder + "\\Logs\\";
  frmLogs& form = program.logs;
  const auto open = [&] {
    program.window.menu.mnuWindowViewLogs.Execute();
    EXPECT_TRUE(form.visible.Get());
    EXPECT_EQ(form.cboLogDate.selected.Get().has_value(), !form.txtLog.text.Get().empty());
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
  EXPECT_EQ(form.txtLog.text.Get(), "one\r\n") << "today's";
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
