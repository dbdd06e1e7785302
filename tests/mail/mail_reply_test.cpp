#include "platform/code_page.h"
#include "tests/mail/mail_fixture.h"

namespace gorbex::test {
namespace {

using Sent = MemoryMail::Sent;
using MailReplyTest = MailFixture;

TEST_F(MailReplyTest, AnswersEverySituationInItsOwnWords) {
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

TEST_F(MailReplyTest, GetsThroughSourceControl) {
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

TEST_F(MailReplyTest, TellsTheAdministratorWhenTheSettingsSaySo) {
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

}  // namespace
}  // namespace gorbex::test
