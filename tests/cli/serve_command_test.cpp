#include "tests/cli/cli_fixture.h"

namespace gorbex::test {
namespace {

using ServeCommandTest = CliFixture;

TEST_F(ServeCommandTest, ServesRequestsUntilToldToEnd) {
  InstallCompiler();
  EXPECT_EQ(Run({"serve", file}).status, 2) << "the stored interval is 0";
  platform.mail.received = {{.body = "BUILD,PRO " + Group::Path("Core") + ","}};
  EXPECT_EQ(Run({"serve", file, "--once"}).status, 0);
  ASSERT_EQ(platform.mail.sent.size(), 1U);
  EXPECT_EQ(platform.mail.sent.front().subject, "Your Build was successfull.");

  platform.journal.clear();
  const Result result = Run({"serve", file, "--interval", "7"});
  EXPECT_EQ(result.status, 0);
  EXPECT_EQ(std::count(platform.journal.begin(), platform.journal.end(), "wait 7000"), 3);
  EXPECT_EQ(std::count(platform.journal.begin(), platform.journal.end(), "mail folder Builder"), 3);

  platform.mail.Fail("folder", RuntimeError(ErrorNumber::PathNotFound, "Builder"));
  const Result broken = Run({"serve", file, "--interval", "7"});
  EXPECT_EQ(broken.status, 1);
  EXPECT_NE(broken.out.find("Path not found: 'Builder'"), std::string::npos) << broken.out;
  platform.mail.Fail("open", RuntimeError(ErrorNumber::CannotCreateObject));
  EXPECT_EQ(Run({"serve", file, "--interval", "7"}).status, 2);
}

TEST_F(ServeCommandTest, ServeTriesSourceControlAgainAfterAnOutage) {
  InstallCompiler();
  platform.files.AddFile(kIni, "[git]");
  platform.sourceControl.outages = 1;
  platform.sourceControl.localSpecs["$/Core.vbp"] = Group::Path("Core");
  platform.mail.received = {{.body = "GET,PRO $/Core.vbp,"}, {.body = "GET,PRO $/Core.vbp,"}};
  const Result served = Run({"serve", file, "--once", "--ini", kIni, "--user", "me"});
  ASSERT_EQ(platform.mail.sent.size(), 2U);
  EXPECT_EQ(platform.mail.sent[0].subject, "GorbexBuilder failed to process your request");
  EXPECT_EQ(platform.mail.sent[1].subject, "GorbexBuilder GET succeeded.");
  EXPECT_NE(served.out.find("Nothing is known of $/Core.vbp: The server is gone"),
            std::string::npos);
}

}  // namespace
}  // namespace gorbex::test
