#include "tests/mail/mail_fixture.h"

namespace gorbex::test {
namespace {

using Received = MemoryMail::Received;
using MailTickTest = MailFixture;

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
