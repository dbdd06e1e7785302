#include "tests/mail/mail_fixture.h"

namespace gorbex::test {
namespace {

using Received = MemoryMail::Received;
using SenderListTest = MailFixture;

TEST_F(SenderListTest, LeavesAloneWhatIsNoRequest) {
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

TEST_F(SenderListTest, IsNotFloodedByMadeUpSenders) {
  Set("AllowedSenders", "dev.example");
  std::vector<Received> mails(1200);
  for (std::size_t i = 0; i < mails.size(); ++i) {
    mails[i].senderAddress = std::to_string(i) + "@evil.example";
  }
  EXPECT_EQ(Only(Tick(mails), {"log"}).size(), 1000U);
  EXPECT_EQ(Only(Tick(mails), {"log"}).size(), 0U);
}

}  // namespace
}  // namespace gorbex::test
