#include <wx/menu.h>

#include <filesystem>

#include "tests/ui/window_fixture.h"

namespace gorbex::test {
namespace {

class MailWindowTest : public WindowFixture {};

TEST_F(MailWindowTest, ServesMailWhileTheInboxIsChecked) {
  namespace fs = std::filesystem;
  for (const char* part : {"new", "cur", "tmp"}) {
    fs::create_directories(bench.folder.Path() / "mails/.Builder" / part);
    fs::create_directories(bench.folder.Path() / "mails" / part);
  }
  bench.folder.Put("mails/sendmail",
                   "#!/bin/sh\ncat > '" + (bench.folder.Path() / "reply").string() + "'\n");
  fs::permissions(bench.folder.Path() / "mails/sendmail", fs::perms::owner_all);
  Open(kProduct);
  const auto set = [&](const char* name, const std::string& value) {
    program->registry.subSetRegistryValue(kProgramKey, name, value);
  };
  set("MailStore", "maildir://" + (bench.folder.Path() / "mails").string());
  set("MailTransport", "sendmail://" + (bench.folder.Path() / "mails/sendmail").string());
  wxMenuBar& bar = *frame->GetMenuBar();
  wxMenuItem& entry = *bar.FindItem(bar.FindMenuItem("Tools", "Check Inbox"));
  const auto isChecked = [&] {
    entry.GetMenu()->UpdateUI();
    return entry.IsChecked();
  };

  program->options.Interval = 0;
  program->window.menu.mnuToolsInBox.Execute();
  EXPECT_TRUE(isChecked());
  bench.folder.Put("mails/.Builder/new/1.a",
                   "From: anna@dev.example\r\nSubject: build request\r\n\r\nx,");
  User::Waits();
  EXPECT_FALSE(fs::exists(bench.folder.Path() / "reply")) << "a timer of 0 never fires";
  program->window.tmrOutlook.interval.Set(50);
  EXPECT_TRUE(User::Sees([&] { return fs::exists(bench.folder.Path() / "reply"); }));
  EXPECT_TRUE(User::Sees([&] { return program->window.stbStatus.Get() == "Idle"; }));
  program->window.menu.mnuToolsInBox.Execute();
  EXPECT_FALSE(isChecked());
  EXPECT_TRUE(Close());
}

}  // namespace
}  // namespace gorbex::test
