#include "platform/code_page.h"
#include "tests/platform/mail_bench.h"
#include "tests/support/memory_file_system.h"
#include "tests/support/memory_mail.h"

namespace gorbex::test {
namespace {

class MemoryMailBench {
 public:
  std::string drive = "C:\\";
  Journal journal;
  MemoryFileSystem files{journal};
  MemoryMail mail{journal, files};

  [[nodiscard]] MailAccount Account() const { return {}; }
  void Deliver(const std::string& subject, const std::string& body) {
    mail.received.push_back({subject, body});
  }
  void Vanish() { mail.received.front().isGone = true; }
  std::string Sent() {
    const auto& sent = mail.sent.back();
    // Names are addresses where nothing needs to travel.
    std::string text = "anna@dev.example|" + sent.subject + "|" + sent.body;
    for (const auto& [path, bytes] : sent.attachments) {
      text += "|" + path.substr(path.rfind('\\') + 1) + "=" + Hexadecimal(bytes);
    }
    return text;
  }

  static std::string Hexadecimal(const std::string& bytes) {
    std::string text;
    for (const char byte : bytes) {
      constexpr const char* kDigits = "0123456789abcdef";
      const auto value = static_cast<unsigned char>(byte);
      text.append({kDigits[value / 16], kDigits[value % 16]});
    }
    return text;
  }
};

template <typename Bench>
class Mails : public testing::Test {
 protected:
  Bench bench_;
};

using MailBenches = testing::Types<MemoryMailBench, MaildirBench, ServerBench>;
TYPED_TEST_SUITE(Mails, MailBenches);

TYPED_TEST(Mails, AreListedReadMarkedAndMayVanish) {
  auto& bench = this->bench_;
  EXPECT_EQ(ErrorOf([&] { static_cast<void>(bench.mail.Folder("Builder")); }),
            "429 The mail system is not open");
  bench.mail.Open(bench.Account());
  EXPECT_THROW(static_cast<void>(bench.mail.Folder("None")), RuntimeError);
  EXPECT_EQ(bench.mail.Folder("Builder")->Count(), 0U);
  bench.Deliver("build request", "GET,BUI,PRO C:\\x.vbp,\r\n");
  bench.Deliver("other", "2");
  const auto folder = bench.mail.Folder("Builder");
  bench.Deliver("late", "3");
  ASSERT_EQ(folder->Count(), 2U);
  EXPECT_THROW(static_cast<void>(folder->Item(0)), RuntimeError);
  EXPECT_THROW(static_cast<void>(folder->Item(3)), RuntimeError);
  const auto mail = folder->Item(1);
  EXPECT_EQ(mail->Subject() + "|" + mail->SenderName() + "|" + mail->SenderAddress(),
            "build request|Anna Berg|anna@dev.example");
  EXPECT_FALSE(mail->IsAutomatic());
  EXPECT_EQ(mail->Body(), "GET,BUI,PRO C:\\x.vbp,\r\n");
  EXPECT_TRUE(mail->UnRead());
  for (int i = 0; i < 2; ++i) {
    mail->MarkRead();
    EXPECT_FALSE(mail->UnRead());
    EXPECT_FALSE(bench.mail.Folder("Builder")->Item(1)->UnRead());
  }
  const auto other = bench.mail.Folder("Builder")->Item(2);
  EXPECT_TRUE(other->UnRead());
  EXPECT_FALSE(other->IsFlagged());
  other->Flag();
  EXPECT_TRUE(other->IsFlagged());
  EXPECT_TRUE(bench.mail.Folder("Builder")->Item(2)->IsFlagged());
  EXPECT_TRUE(bench.mail.Folder("Builder")->Item(2)->UnRead());
  EXPECT_FALSE(bench.mail.Folder("Builder")->Item(1)->IsFlagged());
  bench.Vanish();
  mail->Flag();
  EXPECT_EQ(mail->Body(), std::nullopt);
  mail->MarkRead();
}

TYPED_TEST(Mails, AreAnswered) {
  auto& bench = this->bench_;
  bench.mail.Open(bench.Account());
  bench.Deliver("build request", "x");
  std::string bytes;
  for (int i = 0; i < 100'000; ++i) bytes += static_cast<char>(i % 1000 * (i % 999) % 257);
  bench.files.Write(bench.drive + "x\xE9 1.dll", bytes);
  auto item = bench.mail.Folder("Builder")->Item(1);
  const auto reply = bench.mail.CreateReply(*item);
  item.reset();
  EXPECT_THROW(reply->Send(), RuntimeError);
  reply->AddRecipient("Nobody");
  EXPECT_EQ(ErrorOf([&] { reply->Send(); }), "5 cannot resolve recipient 'Nobody'");
  reply->RemoveRecipient(1);
  reply->AddRecipient("admin@dev.example");
  reply->AddRecipient("Anna Berg");
  EXPECT_THROW(reply->RemoveRecipient(3), RuntimeError);
  reply->RemoveRecipient(1);
  EXPECT_EQ(reply->RecipientCount(), 1U);
  const std::string body =
      "caf\xE9 \x80\r\n\r\n.\r\nFrom x \r\n" + std::string(2000, 'l') + "=20\r\n\r\n";
  reply->SetSubject("Your Build failed. \xFC");
  reply->SetBody(body);
  EXPECT_THROW(reply->AddAttachment(bench.drive + "none.dll"), RuntimeError);
  reply->AddAttachment(bench.drive + "x\xE9 1.dll");
  reply->Send();
  EXPECT_EQ(bench.mail.SendWaiting(), std::vector<std::string>{});
  auto expected = "anna@dev.example|Your Build failed. \xFC|" + body +
                  "|x\xE9 1.dll=" + MemoryMailBench::Hexadecimal(bytes);
  auto sent = bench.Sent();
  if constexpr (!std::is_same_v<TypeParam, MemoryMailBench>) {
    sent = FromUtf8(sent).value_or("no code page: " + sent);
    for (auto at = expected.find('\r'); at != std::string::npos; at = expected.find('\r')) {
      expected.erase(at, 1);
    }
  }
  EXPECT_EQ(sent.substr(0, 3000), expected.substr(0, 3000));
  EXPECT_TRUE(sent == expected);
}

}  // namespace
}  // namespace gorbex::test
