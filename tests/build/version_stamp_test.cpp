#include "build/version_stamp.h"

#include "tests/support/build_fixture.h"

namespace gorbex::test {
namespace {

constexpr const char* kQuestion =
    "show [YesNo Question GorbexBuilder] The new build number requested, is older than the "
    "existing version number for this component.\r\nDo you wish to change it's version to your new "
    "value?";

class VersionStampTest : public BuildFixture {
 protected:
  std::string VersionAfter(const std::string& existing, const std::string& requested) {
    platform.files.AddFile("C:\\P.vbp", existing);
    program.options.VersionComponents = requested;
    Procedure(program.report, kBuildProcedure).Run([&](Procedure& on) {
      program.version.Stamp(on, "C:\\P.vbp");
    });
    return platform.files.Text("C:\\P.vbp");
  }
};

std::string Lines(const std::string& major, const std::string& minor, const std::string& revision) {
  return "MajorVer=" + major + "\r\nMinorVer=" + minor + "\r\nRevisionVer=" + revision + "\r\n";
}

// Each value written adds a line break.
std::string Stamped(const std::string& major, const std::string& minor,
                    const std::string& revision) {
  return Lines(major, minor, revision) + "\r\n\r\n\r\n";
}

TEST_F(VersionStampTest, AsksBeforeItStepsBack) {
  struct Case {
    std::string existing, requested;
    std::optional<Answer> asked;
    std::string after;
  };
  const Case cases[] = {{Lines("1", "2", "3"), "1.2.3", {}, Stamped("1", "2", "3")},
                        {Lines("1", "2", "3"), "1.2.4", {}, Stamped("1", "2", "4")},
                        {Lines("1", "10", "0"), "1.2.3", Answer::Yes, Stamped("1", "2", "3")},
                        {Lines("1", "10", "0"), "1.2.3", Answer::No, Lines("1", "10", "0")},
                        {Lines("2", "0", "0"), "1.10.0", {}, Stamped("1", "10", "0")},
                        {Lines("x", "", "0"), "0.0.0", {}, Stamped("0", "0", "0")},
                        {Lines("1", "2", "3"), "7a.x.5b.9", {}, Stamped("7", "0", "5")},
                        {Lines("1", "2", "3"), "2.10", {}, Stamped("2", "10", "0")},
                        {Lines("0", "0", "0"), ".5.", {}, Stamped("0", "5", "0")},
                        {"Type=Exe\r\n", "1.2.3", {}, "Type=Exe\r\n\r\n\r\n\r\n"}};
  for (const Case& c : cases) {
    SCOPED_TRACE(c.existing + c.requested);
    if (c.asked) dialogs.answers = {*c.asked};
    EXPECT_EQ(VersionAfter(c.existing, c.requested), c.after);
    EXPECT_EQ(Only(Steps(), {"show"}), c.asked ? Journal{kQuestion} : Journal{});
  }
}

TEST_F(VersionStampTest, ReportsNumbersItCannotUse) {
  const std::string overflow = Reported(6, "Overflow", kBuildProcedure);
  const std::string noMinor = Reported(9, "Subscript out of range", ": clsOptions.Minor");
  using Row = std::array<std::string, 4>;
  for (const auto& [existing, requested, report, after] :
       {Row{Lines("99999", "99999", "1"), "1.2.3", overflow, Stamped("1", "2", "3")},
        Row{Lines("1", "0", "0"), "99999.99999.1", overflow, Lines("1", "0", "0")},
        Row{Lines("2147", "483", "648"), "1.2.3", overflow, Stamped("1", "2", "3")},
        Row{Lines("0", "0", "0"), "1", noMinor, Stamped("0", "0", "0")}}) {
    dialogs.answers = {Answer::Ignore, Answer::No};
    EXPECT_EQ(VersionAfter(existing, requested), after);
    EXPECT_EQ(Only(Steps(), {"show"}).at(0), report);
  }
}

}  // namespace
}  // namespace gorbex::test
