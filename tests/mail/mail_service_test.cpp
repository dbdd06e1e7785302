#include "tests/mail/mail_fixture.h"

namespace gorbex::test {
namespace {

using Received = MemoryMail::Received;
using MailServiceTest = MailFixture;

TEST_F(MailServiceTest, TakesARequestFromMailToReplyInOrder) {
  EXPECT_EQ(Tick({{.body = "GET,BUILD,PATH C:\\Drops,PROJECT " + core + ","}}),
            (Journal{"timer False", "pointer hourglass", "status Checking for Email Requests",
                     "mail folder Builder", "enabled mnuFileBuild False",
                     "log Processing Email Request from Anna Berg",
                     "open Open SourceSafe database|INI FIles (*.ini)|*.ini|*.ini",
                     "status Getting ", "status Processing Request from Anna Berg",
                     "start C:\\VB\\VB6.EXE \"" + core + "\" /make /out \"" + kResultLog +
                         "\" /outdir \"C:\\Drops\\\"",
                     "append C:\\Program Files\\GorbexBuilder\\gorbexbuilder.built", "mail read 1",
                     "mail send Your Build was successfull. to Anna Berg", "timer True",
                     "status Idle", "enabled mnuFileBuild True", "pointer default"}));
  EXPECT_TRUE(program.options.GetLatest) << "a setting that follows the request";
}

TEST_F(MailServiceTest, LooksAgainLaterWhenItMayNotServeNow) {
  const std::vector<Received> request = {{.body = "GET,PRO " + core + ","}};
  mail.news = {"a reply waits"};
  for (const auto& [isSo, why] :
       {std::pair(&mail.isFull, "wait, because too many replies could not be sent yet"),
        {&mail.isTaken, "are answered by another program; looking again later"}}) {
    *isSo = true;
    Journal told;
    for (const auto& line : mail.news) told.push_back("log " + line);
    told.push_back(std::string("log Email requests ") + why);
    EXPECT_EQ(Only(Tick(request), {"log", "mail read"}), told);
    EXPECT_TRUE(Only(Tick(request), {"log", "mail read"}).empty()) << "said once";
    EXPECT_EQ(ServiceState(), "on ticking build: Idle");
    *isSo = false;
    EXPECT_EQ(Only(Tick(request), {"mail read"}), Journal{"mail read 1"});
  }
}

TEST_F(MailServiceTest, ReportsAnUnexpectedErrorAndSwitchesItselfOff) {
  const struct {
    std::string operation;
    int call;
    std::string state;
    std::string recipients;  ///< of the error mail; empty for none
  } cases[] = {{"folder", 1, "on build: Checking for Email Requests", ""},
               {"item", 1, "on build: Checking for Email Requests", ""},
               {"body", 1, "on: Checking for Email Requests", ""},
               {"reply", 1, "on: Checking for Email Requests", ""},
               {"recipient", 1, "on: Checking for Email Requests", ""},
               {"mark", 1, "off: Processing Request from Anna Berg", "Anna Berg"},
               {"send", 1, "off: Processing Request from Anna Berg", "Anna Berg"},
               {"item", 2, "on: Processing Request from Anna Berg", "Anna Berg"},
               {"attach", 1, "on ticking build: Idle", "Anna Berg"}};
  const std::string body = "BUILD,PATH C:\\Drops,PRO " + core + ",";
  for (const auto& c : cases) {
    SCOPED_TRACE(c.operation + std::to_string(c.call));
    menu.mnuToolsInBox.checked.Set(false);
    menu.mnuFileBuild.enabled.Set(true);
    menu.mnuToolsInBox.Execute();
    mail.Fail(c.operation, RuntimeError(ErrorNumber::DiskFull), c.call);
    Tick({{.body = body}, {.subject = "hello"}});
    EXPECT_EQ(ServiceState(), c.state);
    EXPECT_EQ(mail.sent.empty() ? "" : mail.sent.back().recipients.front(), c.recipients);
    EXPECT_LE(mail.sent.size(), 1U) << "an answered request has its answer already";
    const bool isAttached = !mail.sent.empty() && !mail.sent[0].attachments.empty();
    EXPECT_EQ(isAttached, c.call == 2) << "only an answer has an attachment";
  }
}

TEST_F(MailServiceTest, FlagsTheMailThatItFailedAtAndGoesOnWithTheOthers) {
  const std::string stranger = "C:\\Stranger.vbp";
  platform.files.AddFile(stranger, "Type=Exe\r\n");
  const Received poisonous{.body = "GET,PRO " + stranger + ",", .senderName = "Eve"};
  const Received good{.body = "GET,PRO " + core + ","};
  EXPECT_EQ(Only(Tick({good, poisonous, good}), {"mail read", "mail flag"}),
            (Journal{"mail read 1", "mail flag 2"}));
  EXPECT_TRUE(mail.received[1].isUnread);
  for (const std::size_t replies : {1U, 0U}) {
    menu.mnuToolsInBox.Execute();
    const Journal steps = Tick(mail.received);
    EXPECT_EQ(mail.sent.size(), replies) << "the mail after it is served, once";
    EXPECT_EQ(
        Only(steps, {"log"}).at(0),
        "log Email Request from anna@dev.example left alone: it is flagged because of an error");
    menu.mnuToolsInBox.Execute();
  }
  menu.mnuToolsInBox.Execute();
  mail.received[1] = {.body = good.body, .senderName = "Eve"};
  EXPECT_EQ(Only(Tick(mail.received), {"mail read"}), Journal{"mail read 2"});
}

TEST_F(MailServiceTest, WaitsForAMailboxThatIsAway) {
  const std::vector<Received> request = {{.body = "BUILD,PATH C:\\Drops,PRO " + core + ","}};
  Tick({});
  const std::string away =
      "log Email requests wait, because the mailbox is away: The server is gone";
  for (const char* operation : {"folder", "item", "body"}) {
    SCOPED_TRACE(operation);
    mail.GoAway(operation);
    EXPECT_EQ(Only(Tick(request), {"log"}), Journal{away});
    EXPECT_EQ(ServiceState(), "on ticking build: Idle");
    EXPECT_TRUE(program.mail.MailboxIsAway());
    mail.GoAway(operation);
    EXPECT_TRUE(Only(Tick(request), {"log"}).empty()) << "one line is enough";
    EXPECT_EQ(
        Only(Tick(request), {"log", "mail send"}),
        (Journal{"log Processing Email Request from Anna Berg",
                 "mail send Your Build was successfull. to Anna Berg", "log The mailbox is back"}));
  }
  // The work done before the mailbox went away is not repeated.
  compiledSources.clear();
  mail.GoAway("mark");
  EXPECT_TRUE(Only(Tick(request), {"mail send", "mail read"}).empty());
  mail.GoAway("mark");
  window.tmrOutlook.elapsed.Emit();
  Steps();
  window.tmrOutlook.elapsed.Emit();
  EXPECT_EQ(Only(Steps(), {"log", "mail read", "mail send"}),
            (Journal{"mail read 1", "mail send Your Build was successfull. to Anna Berg",
                     "log The mailbox is back"}));
  EXPECT_EQ(mail.sent.at(0).attachments.size(), 1U);
  EXPECT_EQ(compiledSources.size(), 1U);
  menu.mnuToolsInBox.Execute();
  menu.mnuToolsInBox.Execute();
  mail.GoAway("folder");
  Tick(request);
  EXPECT_EQ(ServiceState(), "on build: Checking for Email Requests")
      << "a start without a mailbox is an error";
}

TEST_F(MailServiceTest, IsSwitchedByTheMenuAndAtTheStart) {
  EXPECT_EQ(ServiceState().substr(0, 10), "on ticking");
  EXPECT_EQ(window.tmrOutlook.interval.Get(), 30000);
  menu.mnuToolsInBox.Execute();
  EXPECT_EQ(ServiceState().substr(0, 9), "off build");
  Set("MailStore", "imap://host/");
  Set("AutoStart", "True");
  program.start.Form_Load();
  EXPECT_EQ(Only(Steps(), {"mail"}).back(), "mail open imap://host/");
  menu.mnuToolsInBox.Execute();
  mail.Fail("open", RuntimeError(ErrorNumber::CannotCreateObject));
  dialogs.answers = {Answer::Abort};
  Steps();
  menu.mnuToolsInBox.Execute();
  EXPECT_EQ(ServiceState().substr(0, 9), "off build") << "without a mail system";
  EXPECT_EQ(Only(Steps(), {"show"}).size(), 1U);
  for (const int clicks : {1, 2}) {
    mail.onOpen = [&] {
      for (int i = 0; i < clicks; ++i) menu.mnuToolsInBox.Execute();
    };
    menu.mnuToolsInBox.Execute();
    EXPECT_EQ(ServiceState().substr(0, 10), clicks == 1 ? "off build:" : "on ticking");
    EXPECT_EQ(Only(Steps(), {"mail"}).size(), 1U) << "the user acts while it is opened";
  }
  menu.mnuToolsInBox.Execute();
  program.options.Interval = 0;
  menu.mnuToolsInBox.Execute();
  EXPECT_EQ(Only(Steps(), {"status"}).back(),
            "status The inbox is never looked into: set an interval in the options");
}

TEST_F(MailServiceTest, KeepsTheProgramOpenBetweenTwoRequests) {
  int asked = 0;
  platform.events.onEvents = [&] {
    if (mail.sent.size() != 1 || asked++ > 0) return;
    dialogs.answers = {Answer::No};
    EXPECT_FALSE(program.shutDown.Form_QueryUnload());
  };
  Tick({{.body = "BUILD,PRO " + core + ","}, {.body = "BUILD,PRO " + core + ","}});
  EXPECT_GT(asked, 0);
  EXPECT_EQ(mail.sent.size(), 2U);
}

TEST_F(MailServiceTest, StepsBackBehindWhatTheUserDoes) {
  const std::string body = "BUILD,PRO " + core + ",";
  const auto compile = platform.processes.otherwise;
  platform.processes.otherwise = [&](const std::string& command) {
    EXPECT_TRUE(program.work.Goes(Task::Request));
    dialogs.answers = {Answer::Yes};
    EXPECT_FALSE(program.shutDown.Form_QueryUnload());
    window.tmrOutlook.elapsed.Emit();
    menu.mnuToolsInBox.Execute();
    return compile(command);
  };
  Tick({{.body = body}, {.body = body}});
  EXPECT_EQ(mail.sent.size(), 1U) << "closing waits for the present request alone";
  EXPECT_TRUE(mail.received[1].isUnread);
  EXPECT_TRUE(program.shutDown.Due());
  EXPECT_EQ(ServiceState(), "off build: Idle") << "switched off by hand during the tick";

  platform.processes.otherwise = [&](const std::string& command) {
    window.tmrOutlook.elapsed.Emit();
    return compile(command);
  };
  menu.mnuToolsInBox.Execute();
  platform.processes.Queue([&](const std::string& command) {
    menu.mnuToolsInBox.Execute();
    return compile(command);
  });
  mail.Fail("send", RuntimeError(ErrorNumber::DiskFull));
  Tick({{.body = body}});
  EXPECT_EQ(ServiceState().substr(0, 4), "off:") << "an error switches nothing on";

  menu.mnuFileBuild.enabled.Set(true);
  mail.received = {{.body = body}};
  window.tvwProjects.Select(window.tvwProjects.Find("x)" + core));
  menu.mnuToolsInBox.Execute();
  mail.sent.clear();
  menu.mnuTreePopupBuildNowDefault.Execute();
  EXPECT_TRUE(mail.sent.empty()) << "all compiles share one result log";
  window.tmrOutlook.elapsed.Emit();
  EXPECT_EQ(mail.sent.size(), 1U);
}

}  // namespace
}  // namespace gorbex::test
