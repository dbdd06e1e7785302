#include <chrono>

#include "core/file_tools.h"
#include "core/text.h"
#include "platform/code_page.h"
#include "tests/build/build_fixture.h"

namespace gorbex::test {
namespace {

using Received = MemoryMail::Received;
using Sent = MemoryMail::Sent;

const std::string kFileText = "built";

class MailServiceTest : public BuildFixture {
 protected:
  MailServiceTest() {
    Load({"Base", "Core"});
    platform.files.AddFile("C:\\Drops\\Core.dll", kFileText);
    program.options.Interval = 30;
    menu.mnuToolsInBox.Execute();
    Steps();
  }

  /// One tick over only these mails.
  Journal Tick(std::vector<Received> mails) {
    mail.received = std::move(mails);
    mail.sent.clear();
    Steps();
    window.tmrOutlook.elapsed.Emit();
    return Steps();
  }

  /// The one reply to a body.
  Sent ReplyTo(const std::string& body) {
    tick = Tick({{.body = body}});
    EXPECT_EQ(mail.sent.size(), 1U) << body;
    return mail.sent.empty() ? Sent{} : mail.sent.front();
  }

  [[nodiscard]] std::string LastLog() const {
    const auto lines = Only(tick, {"log"});
    return lines.empty() ? "" : lines.back().substr(4);
  }

  [[nodiscard]] std::string ServiceState() const {
    return std::string(menu.mnuToolsInBox.checked.Get() ? "on" : "off") +
           (window.tmrOutlook.enabled.Get() ? " ticking" : "") +
           (menu.mnuFileBuild.enabled.Get() ? " build" : "") +
           (window.mousePointer.Get() == MousePointer::Default ? "" : " hourglass") + ": " +
           window.stbStatus.Get();
  }

  void Set(const std::string& name, const std::string& value) {
    program.registry.subSetRegistryValue(kProgramKey, name, value);
  }

  Journal tick;  ///< what the last request brought about
  MemoryMail& mail = platform.mail;
  frmBuilder& window = program.window;
  MainMenu& menu = window.menu;
  const std::string core = Group::Path("Core");
};

TEST_F(MailServiceTest, TakesARequestFromMailToReplyInOrder) {
  EXPECT_EQ(Tick({{.body = "GET,BUILD,PATH C:\\Drops,PROJECT " + core + ","}}),
            (Journal{"timer False", "pointer hourglass", "status Checking for Email Requests",
                     "mail folder Builder", "enabled mnuFileBuild False",
                     "log Processing Email Request from Anna Berg",
                     "open Open SourceSafe database|INI FIles (*.ini)|*.ini|*.ini",
                     "status Getting ", "status Processing Request from Anna Berg",
                     "start C:\\VB\\VB6.EXE \"" + core + "\" /make /out \"" + kResultLog +
                         "\" /outdir \"C:\\Drops\\\"",
                     "mail read 1", "mail send Your Build was successfull. to Anna Berg",
                     "timer True", "status Idle", "enabled mnuFileBuild True", "pointer default"}));
  EXPECT_TRUE(program.options.GetLatest) << "a setting that follows the request";
}

TEST_F(MailServiceTest, AnswersEverySituationInItsOwnWords) {
  const std::string opening =
      "This is the GorbexBuilder auto-response\r\nYour project request was ";
  const std::string attached =
      "If your build failed, you will receive a copy of the log-file as an attachment to this "
      "message.\r\nHowever, if the build was successfull, the output file will be included as an "
      "attachment\r\n\r\n";
  const std::string confirmed =
      "Since you have not decided to build a project, this is simply to confirm that your GET "
      "request was processed and ";
  const std::string failed =
      "GorbexBuilder encountered an error whilst processing your request, and unfortunatley your "
      "build/get has failed\r\n\r\n";
  const std::string missing =
      "unsuccesfull\r\n\r\nReason : Project file not found/specified\r\n\r\n";
  failing = "Base";
  const std::string base = Group::Path("Base");
  const struct {
    std::string body;
    std::string subject;
    std::string text;
    std::string attachment;
  } cases[] = {
      {"", "GorbexBuilder failed to process your request", missing + failed, ""},
      {"GET,PRO " + core, "GorbexBuilder failed to process your request", missing + failed, ""},
      {"GET,PRO C:\\none.vbp,", "GorbexBuilder failed to process your request", missing + failed,
       ""},
      {"PRO " + core + ",", "GorbexBuilder failed to process your request", "\r\n\r\n" + failed,
       ""},
      {"get latest,Project \"" + core + "\"\r\nregards,", "GorbexBuilder GET succeeded.",
       "succesfull\r\n\r\n" + confirmed + "succeeded.\r\n\r\n", ""},
      {"BUILD it,path   C:\\Drops  ,PRO " + core + ",x", "Your Build was successfull.",
       "succesfull\r\n\r\n" + attached, "C:\\Drops\\Core.dll"},
      {"BUI,PRO " + base + ",", "Your Build failed.",
       "unsuccesfull\r\n\r\nReason : Failed to create binary\r\n\r\n" + attached, kResultLog},
      {"BUILD,PATH C:/Drops,PRO C:/Group/Core/Core.vbp,", "Your Build was successfull.",
       "succesfull\r\n\r\n" + attached, "C:\\Drops\\Core.dll"},
      {"GET,PRO " + LowerCase(core) + ",", "GorbexBuilder GET succeeded.",
       "succesfull\r\n\r\n" + confirmed + "succeeded.\r\n\r\n", ""},
      {"GET, BUI,\r\nBUI,PRO " + core + ",", "GorbexBuilder GET succeeded.",
       "succesfull\r\n\r\n" + confirmed + "succeeded.\r\n\r\n", ""}};
  for (const auto& c : cases) {
    SCOPED_TRACE(c.body);
    program.mail.mnuToolsInBox_Click();
    program.mail.mnuToolsInBox_Click();
    const Sent reply = ReplyTo(c.body);
    EXPECT_EQ(reply.subject, c.subject);
    EXPECT_EQ(reply.body, opening + c.text);
    EXPECT_EQ(reply.attachments.empty() ? "" : reply.attachments.front().first, c.attachment);
    EXPECT_EQ(ServiceState(), "on ticking build: Idle");
  }
}

TEST_F(MailServiceTest, GetsThroughSourceControl) {
  Bind("Core", "$/Core");
  window.IniPath = "srcsafe.ini";
  dialogs.LogsIn();
  platform.sourceControl.files = {{"$/Core/a.cls", {"1", "1", "1"}}};
  platform.sourceControl.localSpecs["$/Core/Core.vbp"] = core;
  EXPECT_EQ(ReplyTo("GET,PRO $/Core/Core.vbp,").subject, "GorbexBuilder GET succeeded.");
  EXPECT_EQ(ReplyTo("GET,PRO $/Nowhere,").subject, "GorbexBuilder failed to process your request");
  EXPECT_EQ(LastLog(),
            "Nothing is known of $/Nowhere: There is no item '$/Nowhere' in the database");
  ReplyTo("BUILD,PRO " + Group::Path("Base") + ",");
  compiledSources.clear();
  platform.sourceControl.failures[{"get", "$/Core"}] = "It is\nlocked";
  for (const char* build : {"", "BUILD,"}) {
    const Sent reply = ReplyTo("GET," + std::string(build) + "PRO " + core + ",");
    EXPECT_EQ(reply.subject, *build != 0 ? "Your Build failed." : "GorbexBuilder GET failed.");
    EXPECT_NE(reply.body.find("unsuccesfull\r\n\r\nReason : Failed to Get Latest\r\n\r\n"),
              std::string::npos);
    const auto log = Only(tick, {"log"});
    EXPECT_EQ(log.at(1), "log Failed to Get Latest: It is locked");
    EXPECT_EQ(log.size() > 2 ? log[2] : "",
              *build == 0
                  ? ""
                  : "log The reply carries the result log of the build of " + Group::Path("Base"));
  }
  EXPECT_TRUE(compiledSources.empty());
}

TEST_F(MailServiceTest, SaysWhyThereIsNoSourceControl) {
  Bind("Core", "$/Core");
  const std::string unknown =
      "No initialisation file of source control is known; name one at the login, or with the "
      "setting INIPath";
  ReplyTo("GET,PRO $/Core/Core.vbp,");
  EXPECT_EQ(LastLog(), "Nothing is known of $/Core/Core.vbp: " + unknown);
  ReplyTo("GET,PRO " + core + ",");
  EXPECT_EQ(LastLog(), "Failed to Get Latest: " + unknown);
}

TEST_F(MailServiceTest, KeepsTheProjectForTheNextRequestOfTheSameTick) {
  const Received named{.body = "BUILD,PATH C:\\Drops,PRO " + core + ","};
  const Received unnamed{.body = "BUILD,"};
  Tick({named, unnamed});
  ASSERT_EQ(mail.sent.size(), 2U);
  EXPECT_EQ(mail.sent[1].subject, "Your Build was successfull.");
  EXPECT_EQ(mail.sent[0].attachments.size(), 1U);
  EXPECT_TRUE(mail.sent[1].attachments.empty()) << "the folder is not kept";
  EXPECT_EQ(ReplyTo("BUILD,").subject, "GorbexBuilder failed to process your request");
}

TEST_F(MailServiceTest, BuildsWithoutAFolderWhereTheProjectSaysAndSendsThatFile) {
  const std::pair<std::string, std::string> cases[] = {
      {"", "C:\\Group\\Own\\Own.dll"},
      {"Path32=\"\"", "C:\\Group\\Own\\Own.dll"},
      {"Path32=\"..\\Drop\"", "C:\\Group\\Own\\..\\Drop\\Own.dll"},
      {"Path32=\"D:\\Drop\"", "D:\\Drop\\Own.dll"},
      {"Path32=\"\\\\server\\drop\"", "\\\\server\\drop\\Own.dll"}};
  const std::string path = Group::Path("Own");
  for (const auto& [line, built] : cases) {
    SCOPED_TRACE(line);
    platform.files.AddFile(path, "Type=OleDll\r\nExeName32=\"Own.dll\"\r\n" + line + "\r\n");
    platform.files.AddFile(built, "new");
    program.buildProject.mnuFileNew_Click();
    ASSERT_TRUE(program.reader.ReadProject(path));
    window.buildDirectory = "C:\\Out\\";
    const Journal steps = Tick({{.body = "BUILD,PRO " + path + ","}});
    EXPECT_EQ(Only(steps, {"start"}),
              Journal{"start C:\\VB\\VB6.EXE \"" + path + "\" /make /out \"" + kResultLog + "\""});
    ASSERT_EQ(mail.sent.at(0).attachments.size(), 1U);
    EXPECT_EQ(mail.sent[0].attachments[0].first, built);
  }
}

TEST_F(MailServiceTest, LeavesAloneWhatIsNoRequest) {
  Set("AllowedSenders", " anna@dev.example, @Team.Example ");
  const std::string body = "GET,PRO " + core + ",";
  const std::vector<Received> mails = {
      {.subject = "Build REQUEST", .body = body},
      {.subject = "build request please", .body = body},
      {.subject = "Re: build request", .body = body},
      {.body = body, .isUnread = false},
      {.body = body, .senderAddress = "list@dev.example", .isAutomatic = true},
      {.body = body, .isGone = true},
      {.body = body, .senderAddress = "anna@dev.example.evil.example"},
      {.body = body, .senderName = "Eve\r\nfake", .senderAddress = ""},
      {.body = body, .senderName = "Nobody", .senderAddress = "", .replyAddress = ""},
      {.body = body, .senderAddress = "ada@team.example", .replyAddress = "x@evil.example"},
      {.body = body, .senderName = "Bo", .senderAddress = "BO@team.example"}};
  const Journal first = Tick(mails);
  EXPECT_EQ(Only(first, {"log", "mail read"}),
            (Journal{"log Processing Email Request from Anna Berg", "mail read 1",
                     "log Email Request from list@dev.example left alone: sent by a program or a "
                     "list",
                     "log Email Request from anna@dev.example.evil.example left alone: not allowed",
                     "log Email Request from Eve  fake left alone: not allowed",
                     "log Email Request from Nobody left alone: there is nobody to answer",
                     "log Email Request from ada@team.example left alone: its Reply-To "
                     "x@evil.example is not allowed",
                     "log Processing Email Request from Bo", "mail read 11"}));
  EXPECT_EQ(mail.sent.size(), 2U);
  Set("AllowedSenders", " , ");
  EXPECT_TRUE(Only(Tick({{.body = body, .senderAddress = "x@y"}}), {"mail send"}).empty());
  mail.received = mails;
  Set("AllowedSenders", " anna@dev.example, @Team.Example ");
  mail.received[0].isUnread = mail.received.back().isUnread = false;
  const Journal second = Tick(mail.received);
  EXPECT_TRUE(mail.sent.empty()) << "a read mail is never taken again";
  EXPECT_TRUE(Only(second, {"log"}).empty()) << "and nobody is refused twice in the log";
}

TEST_F(MailServiceTest, IsNotFloodedByMadeUpSenders) {
  Set("AllowedSenders", "dev.example");
  std::vector<Received> mails(1200);
  for (std::size_t i = 0; i < mails.size(); ++i) {
    mails[i].senderAddress = std::to_string(i) + "@evil.example";
  }
  EXPECT_EQ(Only(Tick(mails), {"log"}).size(), 1000U);
  EXPECT_EQ(Only(Tick(mails), {"log"}).size(), 0U);
}

TEST_F(MailServiceTest, NeverLetsAPathBecomeMoreThanOneArgument) {
  for (const std::string path :
       {"C:\\a\" /run \"C:\\evil.vbp", "C:\\a\tb", "C:\\a\r\nb", "/run", "-x"}) {
    SCOPED_TRACE(path);
    const Journal steps = Tick({{.body = "BUILD,PATH " + path + ",PRO " + core + ","}});
    EXPECT_TRUE(Only(steps, {"start"}).empty());
    EXPECT_EQ(Only(steps, {"log"}).back().substr(0, 32), "log Failed to create binary: Bad");
    EXPECT_NE(mail.sent.at(0).body.find("Reason : Failed to create binary"), std::string::npos);
    EXPECT_EQ(ServiceState(), "on ticking build: Idle");
  }
  const Journal steps = Tick({{.body = "BUILD,PATH C:\\Nowhere,PRO " + core + ","}});
  EXPECT_TRUE(Only(steps, {"start"}).empty());
  EXPECT_EQ(Only(steps, {"log"}).back(),
            "log Failed to create binary: There is no folder C:\\Nowhere\\");
}

TEST_F(MailServiceTest, LooksAtNoShareThatIsNotLoaded) {
  const std::string foreign = "\\\\evil\\share\\P.vbp";
  const std::string own = "\\\\server\\group\\P.vbp";
  for (const auto& path : {foreign, own}) platform.files.AddFile(path, "Type=Exe\r\n");
  ASSERT_TRUE(program.reader.ReadProject(own));
  EXPECT_EQ(ReplyTo("GET,PRO " + own + ",").subject, "GorbexBuilder GET succeeded.");
  for (const auto& path : {foreign, std::string("//evil/share/P.vbp")}) {
    EXPECT_EQ(ReplyTo("GET,PRO " + path + ",").subject,
              "GorbexBuilder failed to process your request");
  }
}

TEST_F(MailServiceTest, LeavesTheMailboxToWhoLooksThroughIt) {
  mail.isTaken = true;
  const std::vector<Received> request = {{.body = "GET,PRO " + core + ","}};
  EXPECT_EQ(Only(Tick(request), {"log", "mail read"}),
            (Journal{"log Email requests are answered by another program; looking again later"}));
  EXPECT_TRUE(Only(Tick(request), {"log", "mail read"}).empty()) << "said once";
  EXPECT_EQ(ServiceState(), "on ticking build: Idle");
  mail.isTaken = false;
  EXPECT_EQ(Only(Tick(request), {"mail read"}), Journal{"mail read 1"});
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
  // What was done before it went away is not done again.
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

TEST_F(MailServiceTest, TellsOfRepliesThatWaitAndTakesNoRequestWhenTooManyDo) {
  const std::vector<Received> request = {{.body = "GET,PRO " + core + ","}};
  mail.news = {"a reply waits"};
  mail.isFull = true;
  const std::string wait =
      "log Email requests wait, because too many replies could not be sent yet";
  EXPECT_EQ(Only(Tick(request), {"log"}), (Journal{"log a reply waits", wait}));
  EXPECT_TRUE(Only(Tick(request), {"log", "mail read"}).empty()) << "said once";
  EXPECT_EQ(ServiceState(), "on ticking build: Idle");
  mail.isFull = false;
  EXPECT_EQ(Only(Tick(request), {"mail read"}), Journal{"mail read 1"});
}

TEST_F(MailServiceTest, TellsTheAdministratorWhenTheSettingsSaySo) {
  program.options.ReplyTo = 1;
  program.options.ReplyUser = "admin@dev.example";
  const std::string stranger = "C:\\Stranger.vbp";
  platform.files.AddFile(stranger, "Type=Exe\r\n");
  const Sent report = ReplyTo("GET,PATH C:\\Drops,PRO " + stranger + ",x");
  EXPECT_EQ(report.recipients, std::vector<std::string>{"admin@dev.example"});
  EXPECT_EQ(report.subject, "GorbexBuilder Encountered an error");
  const auto line = report.body.find(" at line ") + 9;
  EXPECT_EQ(report.body.substr(0, line),
            "GorbexBuilder could not process your request!\r\n"
            "Reason was Invalid procedure call or argument: '" +
                stranger + "'\r\nWhich occured in tmrOutlook_Timer at line ");
  EXPECT_GT(std::stoi(report.body.substr(line)), 0);
  EXPECT_EQ(report.body.substr(report.body.find('\r', line)),
            "\r\n\r\nstrProject   : " + stranger +
                "\r\nstrLocal     : \r\nstrBuildPath : C:\\Drops\\\r\nUB(arrP)     : 3\r\n\r\n"
                "Please forward this message to your GorbexBuilder Administrator\r\n");
  EXPECT_EQ(ServiceState().substr(0, 4), "off:");
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

TEST_F(MailServiceTest, StepsBackBehindWhatTheUserDoes) {
  const std::string body = "BUILD,PRO " + core + ",";
  const auto compile = platform.processes.otherwise;
  platform.processes.otherwise = [&](const std::string& command) {
    EXPECT_TRUE(program.mail.Serving());
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

using namespace std::chrono;

class MailDayTest : public BuildFixture {
 protected:
  static constexpr seconds kInterval{30};

  MailDayTest() {
    Load({"Core"});
    program.options.Interval = static_cast<std::int32_t>(kInterval.count());
    program.window.menu.mnuToolsInBox.Execute();
  }

  /// Lets the service tick for a time, with one request at the beginning of each hour.
  void Serve(seconds time) {
    for (seconds passed{0}; passed < time; passed += kInterval) {
      if (passed % hours(1) == seconds(0)) {
        platform.mail.received.push_back({.body = "BUILD,PRO " + Group::Path("Core") + ","});
      }
      now_ += kInterval;
      const auto since1601 = now_ - sys_days(year{1601} / January / 1);
      platform.clock.now = ToCivil({static_cast<std::uint64_t>(since1601.count()) * 10'000'000});
      platform.clock.elapsed += kInterval;
      program.window.tmrOutlook.elapsed.Emit();
      ASSERT_TRUE(program.window.tmrOutlook.enabled.Get()) << "the service goes on";
    }
  }

  /// The system's time is set, or its time zone changes.
  void SetClock(sys_seconds time) { now_ = time; }

  /// The lines of a day's log. Each bears that day's date.
  std::size_t LinesOf(const std::string& day, const std::string& date) {
    const std::string text = platform.files.Text(program.log.FileOf(day));
    EXPECT_EQ(CountOf(text, "\r\n"), CountOf(text, "[" + date + " ")) << day;
    return CountOf(text, "\r\n");
  }

  sys_seconds now_ = sys_days(year{2026} / February / 28) + hours(12);
};

TEST_F(MailDayTest, ServesThroughMidnightAndWhateverBecomesOfTheClock) {
  platform.files.Remove(program.log.FileOf(program.log.Today()));
  Serve(hours(24));
  EXPECT_EQ(platform.mail.sent.size(), 24U);
  constexpr std::size_t kLines = 1;  // for each request
  EXPECT_EQ(LinesOf("28022026", "28/02/2026"), 12 * kLines);
  EXPECT_EQ(LinesOf("01032026", "01/03/2026"), 12 * kLines);

  SetClock(sys_days(year{1980} / January / 1));
  Serve(hours(1));
  EXPECT_EQ(LinesOf("01011980", "01/01/1980"), kLines);
  SetClock(sys_days(year{2099} / December / 31) + hours(23) + minutes(59));
  Serve(hours(2));
  EXPECT_EQ(LinesOf("31122099", "31/12/2099") + LinesOf("01012100", "01/01/2100"), 2 * kLines);
  SetClock(sys_days(year{2026} / March / 1) + hours(13) - hours(14));
  Serve(hours(2));
  EXPECT_EQ(LinesOf("28022026", "28/02/2026"), 13 * kLines) << "a zone further west";
  EXPECT_EQ(LinesOf("01032026", "01/03/2026"), 13 * kLines);
  EXPECT_EQ(platform.mail.sent.size(), 29U) << "every request has one answer";
}

}  // namespace
}  // namespace gorbex::test
