#include "tests/build/build_fixture.h"

namespace gorbex::test {
namespace {

using GetLatestTest = BuildFixture;

TEST_F(GetLatestTest, TellsTheOutcomeOnTheStatusLine) {
  struct Case {
    bool isOpen;
    std::string spec;
    bool succeeds;
    std::string outcome;
  };
  const Case cases[] = {
      {false, "$/Core", false, "status Failed GET : The database is not open"},
      {false, "", true, ""},
      {true, "$/Core", true, "get $/Core C:\\Work\\Core 67248128"},
      {true, "$/Locked", false, "status It is locked"},
      {true, "$/Broken", false, "status Failed GET : It is broken"},
      {true, "$/No", false, "status Object variable or With block variable not set: '$/No'"}};
  platform.sourceControl.localSpecs = {{"$/Core", "C:\\Work\\Core"}, {"$/Locked", ""}};
  platform.sourceControl.failures = {{{"get", "$/Locked"}, "It is locked"},
                                     {{"item", "$/Broken"}, "It is broken"}};
  // Switched off, so that no look-up asks for a login.
  program.window.IniPath = "srcsafe.ini";
  dialogs.useLogin = [](frmLogin& form) { form.cmdCancel.Execute(); };
  program.session.LoginToSourceSafe();
  for (const Case& c : cases) {
    if (c.isOpen) platform.sourceControl.Open("srcsafe.ini", "me", "");
    program.window.ProjectMembers.Clear();
    clsMember member;
    member.path = "C:\\Core.vbp";
    member.VSSProject = c.spec;
    program.window.ProjectMembers.Add(member);
    Steps();
    EXPECT_EQ(program.latest.GetLatestForProject("C:\\Core.vbp"), c.succeeds);
    Journal expected = {"status Getting " + c.spec};
    if (!c.outcome.empty()) expected.push_back(c.outcome);
    EXPECT_EQ(Steps(), expected);
  }
  EXPECT_THROW(program.latest.GetLatestForProject("C:\\Other.vbp"), RuntimeError);
}

}  // namespace
}  // namespace gorbex::test
