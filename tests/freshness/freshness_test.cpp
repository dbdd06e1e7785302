#include <functional>

#include "core/list_columns.h"
#include "freshness/build_plan.h"
#include "tests/support/build_fixture.h"

namespace gorbex::test {
namespace {

const std::string kShop = Group::Path("Shop");
const std::string kCoreBinary = "C:\\Out\\Core.dll";
const std::string kRecord = "C:\\Program Files\\GorbexBuilder\\gorbexbuilder.built";

/// "Core", and "Shop", which uses it. The compiler writes what it makes of a project: the first
/// line of "Core.cls" is the interface.
class FreshnessTest : public BuildFixture {
 protected:
  FreshnessTest() {
    group.Library("Core").Line("Class=Core; Core.cls").Line("CompatibleMode=\"2\"");
    GroupProject& shop = group.Executable("Shop").Uses("Core").Line("CompatibleMode=\"2\"");
    shop.Line("Form=Shop.frm").Line("OptimizationType=0").Line("CodeViewDebugInfo=0");
    shop.Line("AutoIncrementVer=1").Line("MajorVer=2").Line("MinorVer=0").Line("RevisionVer=9");
    platform.files.AddFile(kCompiler, "compiler");
    platform.files.AddFile("C:\\Group\\Core\\Core.cls", guid + " a\nbody");
    platform.files.AddFile("C:\\Group\\Shop\\Shop.frm", "form");
    platform.files.AddFile("C:\\Group\\Shop\\Shop.frx", "x");
    platform.files.AddFolder("C:\\Out");
    platform.processes.otherwise = [this](const std::string& line) {
      const bool isCore = line.find("Core.vbp") != std::string::npos;
      const auto code = isCore ? platform.files.Text("C:\\Group\\Core\\Core.cls") : "exe";
      platform.files.AddFile(isCore ? kCoreBinary : "C:\\Out\\Shop.exe", code);
      if (isCore) Register(kCoreBinary);
      return CompileProject(line);
    };
    Load();
    program.options.SkipUpToDate = true;
    Build();
  }

  void Register(const std::string& file) {
    platform.registry.AddText(RegistryRoot::ClassesRoot, "TypeLib\\" + guid + "\\1.0\\0\\win32", "",
                              file);
  }

  void Rewrite(const std::string& file, const std::string& from, const std::string& to) {
    std::string text = platform.files.Text(file);
    platform.files.AddFile(file, text.replace(text.find(from), from.size(), to));
  }

  /// The reasons of both projects, such as "Core: a | Shop: b; c".
  std::string Reasons() {
    std::string text;
    for (const auto& project : PlanOf(program.window, program.group, program.freshness).projects) {
      if (!text.empty()) text += " | ";
      text += program.window.ProjectMembers.Item(project.path).Name;
      text += ": " + ReasonsText(project.judgement.reasons, 9);
      if (!project.decidedBy.empty()) text += "(unless)";
    }
    return text;
  }

  const std::string guid = GroupProject::GuidOf("Core");
};

TEST_F(FreshnessTest, TellsForEveryKindOfChangeWhatIsToBeBuiltAndWhy) {
  auto& files = platform.files;
  auto& options = program.options;
  const std::string cls = "C:\\Group\\Core\\Core.cls";
  const std::string form = "C:\\Group\\Shop\\Shop.frm";
  const std::string picture = "C:\\Group\\Shop\\Shop.frx";
  ASSERT_EQ(Reasons(), "Core:  | Shop: ");
  const std::string library = guid + " leads to another file now (Core.dll)";
  struct Change {
    std::function<void()> make, undo;
  };
  const auto swapped = [this](const std::string& file, const std::string& from,
                              const std::string& to) {
    return Change{[=, this] { Rewrite(file, from, to); }, [=, this] { Rewrite(file, to, from); }};
  };
  const auto gone = [&](const std::string& file, const std::string& text) {
    return Change{[&files, file] { files.Remove(file); },
                  [&files, file, text] { files.AddFile(file, text); }};
  };
  const auto set = [](auto& value, const auto& other) {
    return Change{[&value, other] { value = other; }, [&value, usual = value] { value = usual; }};
  };
  struct Case {
    const char* name;
    Change change;
    std::string reasons;
  };
  const Case cases[] = {
      {"touched", swapped(cls, "body", "body"), "Core:  | Shop: "},
      {"body", swapped(cls, "body", "BODY"), "Core: Core.cls changed | Shop: (unless)"},
      {"member gone", gone(form, "form"), "Core:  | Shop: Shop.frm is missing"},
      {"member is a folder",
       {[&] { files.Remove(form), files.AddFolder(form); }, [&] { files.AddFile(form, "form"); }},
       "Core:  | Shop: Shop.frm cannot be read"},
      {"companion", swapped(picture, "x", "y"), "Core:  | Shop: Shop.frx changed"},
      {"interface", swapped(kCoreBinary, " a", " b"),
       "Core: Core.dll is not the one that was built | Shop: the interface of Core.dll "
       "changed(unless)"},
      {"component gone", gone(kCoreBinary, guid + " a\nbody"),
       "Core: Core.dll is missing | Shop: Core.dll, which it uses, is missing(unless)"},
      {"binary gone", gone("C:\\Out\\Shop.exe", "exe"), "Core:  | Shop: Shop.exe is missing"},
      {"registered elsewhere",
       {[&] { Register("C:\\Old\\Core.dll"); }, [&] { Register(kCoreBinary); }},
       "Core: Core.dll is not the one that is registered | Shop: " + library + "(unless)"},
      {"blank lines and revision", swapped(kShop, "RevisionVer=9\r\n", "RevisionVer=10\r\n\r\n"),
       "Core:  | Shop: "},
      {"own debug value", swapped(kShop, "OptimizationType=0", "OptimizationType=1"),
       "Core:  | Shop: the project file changed"},
      {"project", swapped(kShop, "Type=", "Title=\"\"\r\nType="),
       "Core:  | Shop: the project file changed"},
      {"debug", set(options.DebugBuild, "True"), "Core:  | Shop: a debug build is wanted"},
      {"version", set(options.VersionComponents, "2.0.10"),
       "Core: 2.0.10 is wanted, 1.0.0 was built | Shop: 2.0.10 is wanted, 2.0.9 was built"},
      {"built version", set(options.VersionComponents, "2.00.9"),
       "Core: 2.00.9 is wanted, 1.0.0 was built | Shop: (unless)"},
      {"compatibility", set(options.Compatible, false),
       "Core: compatibility is to be broken | Shop: compatibility is to be broken"},
      {"folder", set(program.window.buildDirectory, "C:\\New\\"),
       "Core: another build folder | Shop: another build folder"},
      {"compiler", swapped(kCompiler, "compiler", "newer"),
       "Core: another compiler | Shop: another compiler"},
      {"record",
       {[&] { files.AddFile(kRecord, "1" + files.Text(kRecord).substr(1)); }, [] {}},
       "Core: never built here | Shop: never built here"},
  };
  for (const Case& each : cases) {
    each.change.make();
    EXPECT_EQ(Reasons(), each.reasons) << each.name;
    each.change.undo();
  }
}

TEST_F(FreshnessTest, BuildsOnlyWhatNeedsItAndStopsWhereTheInterfaceIsTheSame) {
  const auto run = [&] {
    compiledSources.clear();
    const Journal steps = Build();
    const auto told = Only(steps, {"show"});
    return std::to_string(compiledSources.size()) + " " + Icons() + " " +
           (told.empty() ? "" : told.back());
  };
  EXPECT_EQ(run(), "0 uptodate uptodate show Built 0 components; 2 are up to date.");
  EXPECT_EQ(program.window.registrationScript.find("Core.dll") != std::string::npos, true);
  Rewrite("C:\\Group\\Core\\Core.cls", "body", "BODY");
  EXPECT_EQ(run(), "1 buildok uptodate show Built 1 components; 1 is up to date.");
  Rewrite("C:\\Group\\Core\\Core.cls", " a", " b");
  EXPECT_EQ(run(), "2 buildok buildok show Built 2 components.");
  EXPECT_EQ(Row("Core").Note(), "To be built:\nCore.cls changed");

  failing = "Shop";
  platform.files.AddFile("C:\\Group\\Shop\\Shop.frm", "broken");
  EXPECT_EQ(run(), "1 uptodate builderror show Errors during the build process");
  platform.files.AddFile("C:\\Group\\Shop\\Shop.frm", "form");
  EXPECT_EQ(Reasons(), "Core:  | Shop: ") << "as it was before the failure";
}

TEST_F(FreshnessTest, ReadsWhatHasNotSettledEvenIfItLooksTheSame) {
  platform.clock.fileNow = {0};  // set back
  Rewrite("C:\\Group\\Core\\Core.cls", "body", "BODY");
  Build();
  EXPECT_EQ(Reasons(), "Core:  | Shop: ");
  Rewrite("C:\\Group\\Core\\Core.cls", "BODY", "body");
  EXPECT_EQ(Reasons(), "Core: Core.cls changed | Shop: (unless)");
}

TEST_F(FreshnessTest, MarksExactlyTheRowsThatAreOutOfDate) {
  Rewrite("C:\\Group\\Core\\Core.cls", "body", "BODY");
  Row("Core").SetChecked(false);
  program.window.menu.mnuQueueMarkOutdated.Execute();
  EXPECT_TRUE(Row("Core").Checked());
  EXPECT_FALSE(Row("Shop").Checked());
  EXPECT_EQ(program.window.stbStatus.Get(),
            "1 row marked, 1 up to date; may need a build after them: Shop.vbp");
  EXPECT_EQ(program.outdated.NoteOf(Row("Shop")), "Up to date since 04/03/2026 15:06:07");
  EXPECT_EQ(program.outdated.NoteOf(Row("Core")), "To be built:\nCore.cls changed");
  Rewrite("C:\\Group\\Core\\Core.cls", "BODY", "body");
  EXPECT_EQ(program.outdated.NoteOf(Row("Core")), "Up to date since 04/03/2026 15:06:07");
  platform.files.Remove(kCoreBinary);
  program.window.menu.mnuQueueMarkOutdated.Execute();
  EXPECT_EQ(program.window.stbStatus.Get(), "2 rows marked (1 may be skipped), 0 up to date");
}

TEST_F(FreshnessTest, AsksAboutCompatibilityOnlyForWhatMayBeBuilt) {
  const auto asks = [&] {
    const auto shown = Only(Build(), {"show"});
    return shown.at(0).find("DO NOT have compatability") != std::string::npos;
  };
  Row("Shop").SetSubItem(queue_column::kCompatibility, "NOT Compatible!");
  EXPECT_FALSE(asks());
  Rewrite("C:\\Group\\Core\\Core.cls", "body", "BODY");
  EXPECT_TRUE(asks()) << "another interface may come of Core";
  Row("Core").SetChecked(false);
  EXPECT_FALSE(asks());
  program.options.GetLatest = true;
  EXPECT_TRUE(asks()) << "other sources may come";
}

}  // namespace
}  // namespace gorbex::test
