#include <gtest/gtest.h>

#include <thread>

#include "automation_servers.h"
#include "platform/windows/file_system.h"
#include "platform/windows/outlook.h"
#include "tests/platform/outcome.h"
#include "tests/support/recording_events.h"

namespace gorbex::test {
namespace {

constexpr const char* kAnswers = R"(Application.GetNamespace=@NameSpace
Application.CreateItem=@NewMail
NameSpace.GetDefaultFolder=@Inbox
NameSpace.GetItemFromID=@MailItem
Inbox.Folders=@Folders
Folders.Item=@MAPIFolder
MAPIFolder.EntryID=F1
MAPIFolder.Items=@Items
Items.Count=2
Items.Item=@MailItem
MailItem.EntryID=M1
MailItem.Parent=@MAPIFolder
MailItem.Subject=build request
MailItem.SenderName=Jörg
MailItem.UnRead=True
MailItem.Body=x
MailItem.Save=
NewMail.Recipients=@Recipients
NewMail.Subject=
NewMail.Body=
NewMail.Attachments=@Attachments
NewMail.Send=
Recipients.Add=@Recipient
Recipients.Count=1
Recipients.Remove=
Recipients.Item=@Recipient
Attachments.Add=)";

struct OutlookTest : testing::Test {
  AutomationServers servers{kAnswers};
  WindowsFileSystem files;
  RecordingEvents events;
  Outlook mail{files, std::chrono::milliseconds(500)};
  std::string attachment = WindowsPath(servers.root.Path()) + "\\a";

  OutlookTest() {
    mail.Handle(events);
    mail.Open({});
    servers.root.Put("a", "1");
  }
};

TEST_F(OutlookTest, IsAskedByNameInTheLettersOfItsList) {
  EXPECT_EQ(servers.Journal(), "Application.GetNamespace(\"MAPI\")\n");
  const auto folder = mail.Folder("Builder");
  const std::string listed =
      "MailItem.EntryID\nMailItem.Subject\nMailItem.SenderName\nMailItem.UnRead\n";
  EXPECT_EQ(servers.Journal(),
            "NameSpace.GetDefaultFolder(6)\nInbox.Folders\nFolders.Item(\"Builder\")\n"
            "MAPIFolder.Items\nItems.Count\nMAPIFolder.EntryID\nItems.Item(1)\n" +
                listed + "Items.Item(2)\n" + listed);
  EXPECT_EQ(folder->Count(), 2U);
  EXPECT_EQ(ErrorOf([&] { static_cast<void>(folder->Item(0)); }), "9 Subscript out of range");
  EXPECT_EQ(ErrorOf([&] { static_cast<void>(folder->Item(3)); }), "9 Subscript out of range");
  const auto item = folder->Item(2);
  EXPECT_EQ(item->Subject() + "|" + item->SenderName(), "build request|J\xF6rg");
  EXPECT_TRUE(item->UnRead());
  EXPECT_EQ(item->Body(), "x");
  item->MarkRead();
  EXPECT_FALSE(item->UnRead());
  const std::string found =
      "NameSpace.GetItemFromID(\"M1\")\nMailItem.Parent\nMAPIFolder.EntryID\n";
  EXPECT_EQ(servers.Journal(),
            found + "MailItem.Body\n" + found + "MailItem.UnRead = False\nMailItem.Save()\n");

  servers.Answer("MailItem.SenderEmailAddress", "anna@dev.example");
  const auto reply = mail.CreateReply(*item);
  EXPECT_TRUE(servers.Journal().ends_with("Application.CreateItem(0)\n"));
  reply->AddRecipient("x@y");
  reply->RemoveRecipient(1);
  reply->AddRecipient("J\xF6rg");
  reply->SetSubject("s");
  reply->SetBody("b");
  reply->AddAttachment(attachment);
  reply->Send();
  EXPECT_EQ(servers.Journal(),
            "NewMail.Recipients\nRecipients.Add(\"x@y\")\n"
            "NewMail.Recipients\nRecipients.Count\nNewMail.Recipients\n"
            "Recipients.Remove(1)\nNewMail.Recipients\nRecipients.Add(\"anna@dev.example\")\n"
            "NewMail.Subject = \"s\"\nNewMail.Body = \"b\"\n"
            "NewMail.Attachments\nAttachments.Add(\"" +
                attachment + "\")\nNewMail.Send()\n");
  reply->AddRecipient("Nobody");
  EXPECT_EQ(servers.Journal(), "NewMail.Recipients\nRecipients.Add(\"Nobody\")\n")
      << "whom nobody knows stops the mail when it is sent";
  EXPECT_EQ(ErrorOf([&] { reply->RemoveRecipient(2); }), "9 Subscript out of range");
  EXPECT_EQ(ErrorOf([&] { reply->AddAttachment(attachment + "none"); }),
            "53 File not found: '" + attachment + "none'");
}

TEST_F(OutlookTest, FlagsMailsAndTakesAttachmentsBack) {
  EXPECT_FALSE(mail.Folder("Builder")->Item(1)->IsFlagged()) << "an Outlook without flags";
  servers.Answer("MailItem.FlagStatus", "2");
  const auto item = mail.Folder("Builder")->Item(1);
  EXPECT_TRUE(item->IsFlagged());
  item->Flag();
  EXPECT_TRUE(servers.Journal().ends_with("MailItem.FlagStatus = 2\nMailItem.Save()\n"));
  servers.Answer("Attachments.Count", "2");
  servers.Answer("Attachments.Remove", "");
  mail.CreateReply(*item)->RemoveAttachments();
  EXPECT_TRUE(servers.Journal().ends_with(
      "Attachments.Count\nAttachments.Remove(1)\nAttachments.Remove(1)\n"));
}

TEST_F(OutlookTest, KnowsWhoSentAMailAndWhatAProgramSent) {
  const std::string smtp = "\nMailItem.SenderEmailType=SMTP\nMailItem.SenderEmailAddress=a@b";
  const std::string wanted = "\nMailItem.ReplyRecipients=@Recipients\nRecipient.";
  const std::string header = smtp + "\nMailItem.PropertyAccessor=@Accessor\nAccessor.GetProperty=";
  const std::string exchange =
      "\nMailItem.SenderEmailType=EX\nMailItem.SenderEmailAddress=/O=X/CN=a@b";
  const std::pair<std::string, std::string> cases[] = {
      {smtp, "a@b|a@b|"},
      {smtp + wanted + "Address=r@c", "a@b|r@c|"},
      {exchange, "|J\xF6rg|"},
      {exchange + "\nMailItem.Sender=@Entry\nEntry.GetExchangeUser=@User\n"
                  "User.PrimarySmtpAddress=e@x",
       "e@x|e@x|"},
      {wanted + "Address=/O=X/CN=R\nRecipient.Name=Somebody", "|Somebody|"},
      {"", "|J\xF6rg|"},
      {header + "Auto-Submitted: auto-replied", "a@b|a@b|automatic"},
      {header + "Precedence: bulk", "a@b|a@b|automatic"},
      {"\nMailItem.MessageClass=REPORT.IPM.Note.NDR", "|J\xF6rg|automatic"},
      {"\nMailItem.MessageClass=IPM.Schedule.Meeting.Request", "|J\xF6rg|automatic"},
      {"\nMailItem.MessageClass=IPM.Note.Rules.OofTemplate.Microsoft", "|J\xF6rg|automatic"}};
  for (const auto& [answers, expected] : cases) {
    servers.root.Put("answers", kAnswers + answers);
    const auto item = mail.Folder("Builder")->Item(1);
    EXPECT_EQ(item->SenderAddress() + "|" + item->ReplyAddress() + "|" +
                  (item->IsAutomatic() ? "automatic" : ""),
              expected)
        << answers;
  }
}

TEST_F(OutlookTest, ListsWhatIsNoMailAndGoesOnWhenMailsGo) {
  const auto item = mail.Folder("Builder")->Item(1);
  const auto expectGone = [&] {
    EXPECT_EQ(item->Body(), std::nullopt);
    item->MarkRead();
    EXPECT_EQ(servers.Journal().find("UnRead ="), std::string::npos);
  };
  for (const char* none : {"!8004010F|moved", "!8004010A|deleted", "!80040107|unknown", ""}) {
    servers.Answer("NameSpace.GetItemFromID", none);
    expectGone();
  }
  EXPECT_EQ(item->SenderAddress() + item->ReplyAddress(), "");
  EXPECT_FALSE(item->IsAutomatic());
  servers.Answer("NameSpace.GetItemFromID", "@MailItem");
  servers.Answer("MAPIFolder.EntryID", "Deleted");
  expectGone();

  // A report has no sender.
  servers.Answer("Items.Item", "@ReportItem");
  for (const auto& [member, answer] :
       {std::pair("EntryID", "R1"), {"Parent", "@MAPIFolder"}, {"UnRead", "True"}}) {
    servers.Answer(std::string("ReportItem.") + member, answer);
  }
  const auto report = mail.Folder("Builder")->Item(1);
  servers.Answer("NameSpace.GetItemFromID", "@ReportItem");
  EXPECT_EQ(report->Subject() + report->SenderName(), "");
  servers.Answer("Items.Item", "!8004010F|moved");
  EXPECT_EQ(mail.Folder("Builder")->Count(), 0U);
}

TEST_F(OutlookTest, DoesNotHoldTheProgramUp) {
  const auto item = mail.Folder("Builder")->Item(1);
  servers.Answer("MailItem.Body", "~");
  events.count = 0;
  EXPECT_EQ(ErrorOf([&] { static_cast<void>(item->Body()); }),
            "440 The server does not answer in time");
  EXPECT_GT(events.count, 10);
  servers.Answer("MailItem.Body", "x");
  EXPECT_EQ(ErrorOf([&] { item->MarkRead(); }), "440 The server does not answer in time");
  std::this_thread::sleep_for(std::chrono::seconds(2));
  EXPECT_EQ(item->Body(), "x");
  EXPECT_EQ(servers.Journal().find("UnRead ="), std::string::npos) << "given up is given up";
}

TEST_F(OutlookTest, MayNotBeInstalled) {
  AutomationServers::Remove(L"Outlook.Application.8");
  EXPECT_EQ(ErrorOf([&] { mail.Open({}); }),
            "429 ActiveX component can't create object: 'Outlook.Application.8': it is not "
            "registered");
}

}  // namespace
}  // namespace gorbex::test
