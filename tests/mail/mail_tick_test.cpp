#include "tests/mail/mail_fixture.h"

namespace gorbex::test {
namespace {

using Received = MemoryMail::Received;
using MailTickTest = MailFixture;

TEST_F(MailTickTest, LeavesAloneWhatIsNoRequest) {
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
      {.body = body, .senderAddress = "ada@team.example", .isAutomatic = true},
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
                     "log Email Request from ada@team.example left alone: sent by a program or a "
                     "list",
                     "log Processing Email Request from Bo", "mail read 12"}));
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

TEST_F(MailTickTest, IsNotFloodedByMadeUpSenders) {
  Set("AllowedSenders", "dev.example");
  std::vector<Received> mails(1200);
  for (std::size_t i = 0; i < mails.size(); ++i) {
    mails[i].senderAddress = std::to_string(i) + "@evil.example";
  }
  EXPECT_EQ(Only(Tick(mails), {"log"}).size(), 1000U);
  EXPECT_EQ(Only(Tick(mails), {"log"}).size(), 0U);
}

TEST_F(MailTickTest, KeepsTheProjectForTheNextRequestOfTheSameTick) {
  const Received named{.body = "BUILD,PATH C:\\Drops,PRO " + core + ","};
  const Received unnamed{.body = "BUILD,"};
  Tick({named, unnamed});
  ASSERT_EQ(mail.sent.size(), 2U);
  EXPECT_EQ(mail.sent[1].subject, "Your Build was successfull.");
  EXPECT_EQ(mail.sent[0].attachments.size(), 1U);
  EXPECT_TRUE(mail.sent[1].attachments.empty()) << "the folder is not kept";
  EXPECT_EQ(ReplyTo("BUILD,").subject, "GorbexBuilder failed to process your request");
}

TEST_F(MailTickTest, BuildsWithoutAFolderWhereTheProjectSaysAndSendsThatFile) {
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

TEST_F(MailTickTest, NeverLetsAPathBecomeMoreThanOneArgument) {
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

TEST_F(MailTickTest, LooksAtNoShareThatIsNotLoaded) {
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

}  // namespace
}  // namespace gorbex::test
