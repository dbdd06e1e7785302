#include <gtest/gtest.h>

#include <thread>

#include "mail_benches.h"

namespace gorbex::test {
namespace {

TEST(OutlookMail, IsAskedByNameInTheLettersOfItsList) {
  OutlookBench bench;
  bench.mail.Open({});
  EXPECT_EQ(bench.servers.Journal(), "Application.GetNamespace(\"MAPI\")\n");
  EXPECT_EQ(bench.mail.Folder("Builder")->Count(), 0U);
  EXPECT_EQ(bench.servers.Journal(),
            "NameSpace.GetDefaultFolder(6)\nMAPIFolder.Folders()\nFolders.Item(\"Builder\")\n"
            "MAPIFolder.Items()\nItems.Count()\n");
  bench.Deliver("build request", "x");
  const auto reply = bench.mail.CreateReply(*bench.mail.Folder("Builder")->Item(1));
  bench.servers.Journal();
  bench.files.Write(bench.drive + "a", "1");
  reply->AddRecipient("x@y");
  reply->RemoveRecipient(1);
  reply->AddRecipient("Anna Berg");
  reply->SetSubject("s");
  reply->SetBody("b");
  reply->AddAttachment(bench.drive + "a");
  reply->Send();
  EXPECT_EQ(bench.servers.Journal(),
            "NewMail.Recipients()\nRecipients.Add(\"x@y\")\nRecipient.Resolve()\n"
            "NewMail.Recipients()\nRecipients.Count()\nNewMail.Recipients()\n"
            "Recipients.Remove(1)\nNewMail.Recipients()\nRecipients.Add(\"anna@dev.example\")\n"
            "Recipient.Resolve()\nNewMail.Subject(\"s\")\nNewMail.Body(\"b\")\n"
            "NewMail.Attachments()\nAttachments.Add(\"" +
                bench.drive + "a\")\nNewMail.Send()\n");
}

TEST(OutlookMail, KnowsWhoSentAMailAndWhatAProgramSent) {
  struct Case {
    std::string properties, expected;
  };
  const Case cases[] = {
      {"SenderEmailType=SMTP\nSenderEmailAddress=a@b", "J\xF6rg|a@b|a@b|"},
      {"SenderEmailType=SMTP\nSenderEmailAddress=a@b\nReplyTo=r@c", "J\xF6rg|a@b|r@c|"},
      {"SenderEmailType=EX\nSenderEmailAddress=/O=X/CN=a@b", "J\xF6rg||J\xF6rg|"},
      {"ReplyTo=/O=X/CN=R", "J\xF6rg||Somebody|"},
      {"", "J\xF6rg||J\xF6rg|"},
      {"SenderEmailAddress=a@b\nHeader=Auto-Submitted: auto-replied", "J\xF6rg|a@b|a@b|automatic"},
      {"SenderEmailAddress=a@b\nHeader=Precedence: bulk", "J\xF6rg|a@b|a@b|automatic"},
      {"MessageClass=REPORT.IPM.Note.NDR", "J\xF6rg||J\xF6rg|automatic"},
      {"MessageClass=IPM.Schedule.Meeting.Request", "J\xF6rg||J\xF6rg|automatic"},
      {"MessageClass=IPM.Note.Rules.OofTemplate.Microsoft", "J\xF6rg||J\xF6rg|automatic"}};
  for (const Case& c : cases) {
    OutlookBench bench;
    bench.DeliverRaw("SenderName=J\u00F6rg\n" + c.properties + "\n", "");
    bench.mail.Open({});
    const auto mail = bench.mail.Folder("Builder")->Item(1);
    EXPECT_EQ(mail->SenderName() + "|" + mail->SenderAddress() + "|" + mail->ReplyAddress() + "|" +
                  (mail->IsAutomatic() ? "automatic" : ""),
              c.expected);
    const auto reply = bench.mail.CreateReply(*mail);
    const bool isKnown = mail->ReplyAddress() != "Somebody";
    EXPECT_EQ(ErrorOf([&] { reply->AddRecipient(mail->SenderName()); }),
              isKnown ? "<none>" : "5 cannot resolve recipient 'Somebody'");
    EXPECT_EQ(reply->RecipientCount(), isKnown ? 1U : 0U);
  }
}

TEST(OutlookMail, ListsWhatIsNoMailAndGoesOnWhenMailsGo) {
  OutlookBench bench;
  bench.DeliverRaw("MessageClass=REPORT.IPM.Note.DR\n", "");
  bench.Deliver("build request", "x");
  bench.mail.Open({});
  const auto folder = bench.mail.Folder("Builder");
  ASSERT_EQ(folder->Count(), 2U);
  EXPECT_EQ(folder->Item(1)->Subject() + folder->Item(1)->SenderName(), "");
  const auto mail = folder->Item(2);
  std::filesystem::remove(bench.servers.root.Path() / "Builder/2");
  EXPECT_EQ(mail->Body(), std::nullopt);
  mail->SetUnRead(false);
  EXPECT_EQ(mail->SenderAddress() + mail->ReplyAddress(), "");
  EXPECT_FALSE(mail->IsAutomatic());
}

TEST(OutlookMail, DoesNotHoldTheProgramUp) {
  OutlookBench bench;
  bench.Deliver("build request", "x");
  bench.mail.Open({});
  const auto mail = bench.mail.Folder("Builder")->Item(1);
  bench.servers.Fail("MailItem.Body", "0", "silence");
  bench.events.count = 0;
  EXPECT_EQ(ErrorOf([&] { static_cast<void>(mail->Body()); }),
            "440 The server does not answer in time");
  EXPECT_GT(bench.events.count, 10);
  bench.servers.FailNoMore();
  EXPECT_EQ(ErrorOf([&] { mail->SetUnRead(false); }), "440 The server does not answer in time");
  std::this_thread::sleep_for(std::chrono::seconds(2));
  EXPECT_EQ(mail->Body(), "x");
  EXPECT_TRUE(bench.mail.Folder("Builder")->Item(1)->UnRead());
}

TEST(OutlookMail, IsHeardInItsOwnWords) {
  OutlookBench bench;
  bench.Deliver("build request", "x");
  bench.files.Write(bench.drive + "a", "1");
  bench.mail.Open({});
  const auto mail = bench.mail.Folder("Builder")->Item(1);
  const auto reply = bench.mail.CreateReply(*mail);
  const std::pair<std::string, std::function<void()>> operations[] = {
      {"Application.GetNamespace", [&] { Outlook(bench.files).Open({}); }},
      {"Folders.Item", [&] { static_cast<void>(bench.mail.Folder("Builder")); }},
      {"Items.Item", [&] { static_cast<void>(bench.mail.Folder("Builder")); }},
      {"MailItem.UnRead", [&] { mail->SetUnRead(false); }},
      {"MailItem.Body", [&] { static_cast<void>(mail->Body()); }},
      {"Application.CreateItem", [&] { static_cast<void>(bench.mail.CreateReply(*mail)); }},
      {"Recipients.Add", [&] { reply->AddRecipient("x@y"); }},
      {"Recipients.Count", [&] { static_cast<void>(reply->RecipientCount()); }},
      {"NewMail.Subject", [&] { reply->SetSubject("s"); }},
      {"NewMail.Body", [&] { reply->SetBody("b"); }},
      {"Attachments.Add", [&] { reply->AddAttachment(bench.drive + "a"); }},
      {"NewMail.Send", [&] { reply->Send(); }}};
  for (const auto& [call, operation] : operations) {
    bench.servers.Fail(call, "80040119", "The \u00E9 failed.");
    EXPECT_EQ(ErrorOf(operation), "-2147221223 The \xE9 failed.") << call;
  }
  bench.servers.FailNoMore();
  EXPECT_EQ(ErrorOf([&] { reply->AddAttachment(bench.drive + "none"); }),
            "53 File not found: '" + bench.drive + "none'");
  AutomationServers::Remove(L"Outlook.Application.8");
  EXPECT_EQ(ErrorOf([&] { bench.mail.Open({}); }),
            "429 ActiveX component can't create object: 'Outlook.Application.8': it is not "
            "registered");
}

}  // namespace
}  // namespace gorbex::test
