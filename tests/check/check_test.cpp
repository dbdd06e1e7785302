#include <gtest/gtest.h>

#include <fstream>
#include <functional>
#include <sstream>

#include "app/program.h"
#include "check/check.h"
#include "tests/support/group_builder.h"
#include "tests/support/memory_platform.h"
#include "tests/support/scripted_dialogs.h"

namespace gorbex::test {
namespace {

constexpr auto kClasses = RegistryRoot::ClassesRoot;
const std::string kTool = "{11112222-0000-4000-8000-0000C0DEC0DE}";
const std::string kToolFile = "C:\\windows\\system32\\Tool.dll";
const std::string kReference = "Reference=*\\G" + kTool + "#2.0#0#";

/// A group without a fault: Till uses Money and Core, Money uses Core, and all use a component that
/// is installed.
struct World {
  World() {
    platform.files.AddFile("C:\\VB\\VB6.EXE", "MZ");
    platform.registry.AddText(kClasses, "VisualBasic.Project\\shell\\open\\command", "",
                              "\"C:\\VB\\VB6.EXE\" \"%1\"");
    Install(kTool, "2.0", "win32", kToolFile);
    platform.files.AddFile(kToolFile, "tool");
    for (GroupProject* project : {&core, &money, &till}) {
      project->Line("CompatibleMode=\"2\"").Line("CompatibleEXE32=\"Old.cmp\"");
      project->Line(kReference + kToolFile + "#Tool");
    }
    money.Uses("Core");
    till.Uses("Money").Uses("Core");
    core.Line("Class=Core; Core.cls");
    platform.files.AddFile("C:\\Group\\Core\\Core.cls", "VERSION 1.0 CLASS\r\n");
    platform.files.AddFile("C:\\Group\\Core\\Old.cmp", kTool);
    platform.files.AddFile("C:\\Group\\Money\\Old.cmp", kTool);
  }

  void Install(const std::string& guid, const std::string& version, const std::string& system,
               const std::string& file) {
    platform.registry.AddText(kClasses, "TypeLib\\" + guid + "\\" + version + "\\0\\" + system, "",
                              file);
  }

  /// The binary of an earlier build.
  void Built(GroupProject& project) {
    project.Built();
    Install(project.Guid(), "1.0", "win32", project.Binary());
  }

  void Rewrite(const std::string& file, const std::string& from, const std::string& to,
               std::uint32_t attributes = file_attribute::kArchive) {
    std::string text = platform.files.Text(file);
    for (auto at = text.find(from); at != std::string::npos; at = text.find(from, at + to.size())) {
      text.replace(at, from.size(), to);
    }
    platform.files.AddFile(file, text, attributes);
  }

  Findings Check(const CheckSelection& selection = {}) {
    const std::string file = group.BuildProject(lines);
    for (const auto& [from, to] : queueChanges) Rewrite(file, from, to);
    Program program(platform.Services(), dialogs);
    static_cast<void>(program.start.ReadState());
    EXPECT_TRUE(program.buildProject.LoadProject(file, BuildProjectFile::Unread::IsKept));
    platform.journal.clear();
    const GroupCheck check({program.window, program.options, platform.files, program.registry,
                            platform.components, program.referenceUpdate});
    auto findings = check.RunOpen(selection);
    EXPECT_EQ(platform.journal, Journal{});  // nothing was changed
    return findings;
  }

  MemoryPlatform platform;
  ScriptedDialogs dialogs{platform.journal};
  Group group{platform};
  GroupProject& core = group.Library("Core");
  GroupProject& money = group.Library("Money");
  GroupProject& till = group.Executable("Till");
  std::vector<std::string> lines = {"breakcompat=False"};
  std::vector<std::pair<std::string, std::string>> queueChanges;
};

std::string Told(const Findings& findings) {
  std::string told;
  for (const Finding& finding : findings) {
    told.append(told.empty() ? "" : "\n").append(finding.id).append(": ").append(finding.text);
  }
  return told;
}

const std::string kUpdating = "changerefs=True";
const std::string kBuildFolder = "builddir=C:\\Group\\Bin\\";

struct Defect {
  std::function<void(World&)> make;
  std::string told;
};

const std::string kCore = Group::Path("Core");
const std::string kTill = Group::Path("Till");
const std::string kUnchecked = "queue=" + kCore;
const std::vector<Defect> kDefects = {
    {[](World& w) { w.platform.files.Remove("C:\\VB\\VB6.EXE"); },
     "compiler-missing: the compiler C:\\VB\\VB6.EXE does not exist"},
    {[](World& w) { w.lines.emplace_back("builddir=C:\\Nowhere\\"); },
     "build-folder: the build folder C:\\Nowhere\\ does not exist"},
    {[](World& w) {
       w.platform.files.AddFolder("C:\\Sealed", file_attribute::kReadOnly);
       w.lines.emplace_back("builddir=C:\\Sealed\\");
     },
     "build-folder: the build folder C:\\Sealed\\ is not writable"},
    {[](World& w) { w.lines.push_back(kUpdating); },
     "build-folder: the build folder C:\\Group\\Bin does not end with \"\\\", so that the update "
     "of references finds no built component"},
    {[](World& w) {
       w.lines.emplace_back("builddir=");
       w.Rewrite(kTill, "C:\\Group\\Bin\"", "..\\Out\"");
     },
     "build-folder: the output folder C:\\Group\\Out does not exist"},
    {[](World& w) { w.platform.files.Remove(kTill); },
     "project-unreadable: the project cannot be read: File not found: '" + kTill + "'"},
    {[](World& w) { w.platform.files.AddFile(kTill, std::string(20, '\0')); },
     "project-unreadable: the project cannot be read: the file holds nothing but zero bytes"},
    {[](World& w) { w.Rewrite(kCore, "\r\n", "\n"); },
     "line-ends: its lines end with LF only; the compiler wants CR LF"},
    {[](World& w) { w.platform.files.AddFile("C:\\Group\\Core\\Core.cls", "a\nb\n"); },
     "line-ends: its lines end with LF only; the compiler wants CR LF"},
    {[](World& w) { w.Rewrite(kTill, "Name=\"Till\"\r\n", ""); },
     "output-missing: the project has no name"},
    {[](World& w) {
       w.Rewrite(kCore, "ExeName32=\"Core.dll\"\r\n", "");
       w.Built(w.core);
     },
     "output-missing: the project does not name its output file; 2 projects use Core.dll"},
    {[](World& w) { w.platform.files.Remove("C:\\Group\\Core\\Core.cls"); },
     "source-missing: Core.cls is missing"},
    {[](World& w) {
       w.till.Line("ResFile32=\"..\\Shop.res\"").Line("Form=Bin");
       w.platform.files.AddFile("C:\\Group\\Shop.res", "x\ny");
       w.platform.files.AddFolder("C:\\Group\\Till\\Bin");
     },
     "source-missing: Bin cannot be read: it is a folder"},
    {[](World& w) { w.Install(kTool, "2.0", "win32", ""); },
     "reference-unregistered: Tool.dll " + kTool + " 2.0 is not registered; 3 projects use it"},
    {[](World& w) { w.till.Line("Object=" + kTool + "#1.9#0; Tool.dll"); },
     "reference-unregistered: Tool.dll " + kTool + " 1.9 is not registered"},
    {[](World& w) { w.till.Line("Reference=nonsense"); },
     "reference-unregistered: the reference names no component"},
    {[](World& w) {
       w.queueChanges = {{"queue=*" + kCore, kUnchecked}};
     },
     "reference-unregistered: Core.dll {" + World().core.Guid().substr(1) +
         " 1.0 is not registered, and the run does not build Core.vbp; 2 projects use it"},
    {[](World& w) { w.platform.files.Remove(kToolFile); },
     "reference-file-missing: Tool.dll " + kTool + " 2.0 is registered as " + kToolFile +
         ", which does not exist; 3 projects use it"},
    {[](World& w) { w.till.Line("Reference=*\\A..\\Gone\\Gone.vbp"); },
     "reference-file-missing: the referenced project C:\\Group\\Gone\\Gone.vbp does not exist"},
    {[](World& w) { w.platform.files.Remove("C:\\Group\\Core\\Old.cmp"); },
     "compatible-binary-missing: the compatible binary C:\\Group\\Core\\Old.cmp does not exist"},
    {[](World& w) { w.platform.files.AddFile("C:\\Group\\Core\\Old.cmp", "MZ"); },
     "compatible-binary-missing: the compatible binary C:\\Group\\Core\\Old.cmp has no interface "
     "that can be read"},
    {[](World& w) {
       w.group.Executable("Other");
       w.Rewrite(Group::Path("Other"), "Other.exe", "TILL.exe");
     },
     "same-output: 2 projects write C:\\Group\\Bin\\Till.exe: Till.vbp, Other.vbp"},
    {[](World& w) { w.core.Uses("Money"); },
     "circle: 2 projects use one another in a circle: Core.vbp, Money.vbp"},
    {[](World& w) {
       w.group.Library("Late").Line("CompatibleMode=\"1\"");
       w.core.Uses("Late");
     },
     "queue-order: Late.vbp is queued after 1 project that uses it: Core.vbp"},
    {[](World& w) {
       w.lines.insert(w.lines.end(), {kUpdating, kBuildFolder});
       w.queueChanges = {{"queue=*" + kCore, kUnchecked}};
       w.Built(w.core);
     },
     "references-would-empty: an update of references would empty the identity of "
     "C:\\Group\\Bin\\Core.dll, because no component with an identity is found there; 2 projects "
     "use it"},
    {[](World& w) {
       w.lines.emplace_back("version=1.0.0");
       w.Rewrite(kTill, "\r\n", "\r\n", file_attribute::kReadOnly);
     },
     "project-read-only: the project file is read-only, and the run is to write the version into "
     "it"},
    {[](World& w) { w.lines.emplace_back("version=9999.9999.9999"); },
     "version-overflow: the version 9999.9999.9999 cannot be stamped"},
    {[](World& w) {
       w.lines.emplace_back("version=1.0.0");
       w.till.Line("MajorVer=2147").Line("MinorVer=4836").Line("RevisionVer=480");
     },
     "version-overflow: the version 2147.4836.480 is too large to be compared with the wanted "
     "one"},
    {[](World& w) { w.till.Line("AutoIncrementVer=1").Line("RevisionVer=9999"); },
     "version-overflow: the revision of 0.0.9999 cannot be increased further"},
    {[](World& w) {
       w.platform.files.AddFile("C:\\Tools\\Tool.dll", "another tool");
       w.Rewrite(kTill, kToolFile, "C:\\Tools\\Tool.dll");
       w.Rewrite(kCore, kReference + kToolFile + "#Tool\r\n", "");
       w.Rewrite(Group::Path("Money"), kReference + kToolFile + "#Tool\r\n", "");
     },
     "registered-elsewhere: Tool.dll " + kTool + " 2.0 is registered as " + kToolFile +
         ", and the project names C:\\Tools\\Tool.dll, which differs from it"},
    {[](World& w) {
       w.queueChanges = {{"queue=*" + kCore + ",\r\n", ""}};
       w.Built(w.core);
     },
     "used-not-queued: Core.vbp is not in the queue, and 2 queued projects use it: Money.vbp, "
     "Till.vbp"},
    {[](World& w) { w.Rewrite(kCore, "CompatibleMode=\"2\"", "CompatibleMode=\"0\""); },
     "not-compatible: the project gets new identities with each build, and 2 projects use it: "
     "Money.vbp, Till.vbp"},
    {[](World& w) { w.till.Line("Reference=*\\G" + kTool + "#2.0#0#C:\\Tools\\BigMoney.dll#Big"); },
     "name-in-name: BigMoney.dll is taken for Money.dll of Money.vbp"},
    {[](World& w) {
       w.lines.insert(w.lines.end(), {kUpdating, kBuildFolder});
       w.group.Executable("Spare").Line("Class=Core; ..\\Core\\Core.cls");
       w.queueChanges = {{"queue=*" + Group::Path("Spare"), "queue=" + Group::Path("Spare")}};
     },
     "shared-member: Core.cls is also a part of Core.vbp, whose update of references changes it; "
     "the run does not build Spare.vbp"},
    {[](World& w) {
       w.Install("{9}", "1.0", "win64", "C:\\Tools\\Big.dll");
       w.till.Line("Reference=*\\G{9}#1.0#0#C:\\Tools\\Big.dll#Big");
     },
     "only-64-bit: Big.dll {9} 1.0 is registered for 64-bit programs only"},
    {[](World& w) {
       w.till.Line("Module=Aux; Aux.bas");
       w.platform.files.AddFile("C:\\Group\\Till\\Aux.bas", "\r\n");
     },
     "name-not-representable: Aux.bas is the name of a device"},
    {[](World& w) { w.platform.files.twin = "CORE.cls"; },
     "letter-case: C:\\Group\\Core\\Core.cls exists twice; the other file's name is CORE.cls"},
    {[](World& w) { w.platform.files.AddFile("C:\\Group\\Core\\Spare.vbp", "Type=Exe\r\n"); },
     "not-in-build-project: no build project of the folder names this project"},
    {[](World& w) { w.lines.emplace_back("getonbuild=True"); },
     "no-source-control: 3 projects are not under source control, and the run is to get their "
     "latest sources"},
};

TEST(Check, FindsNothingInAGroupWithoutAFault) {
  EXPECT_EQ(Told(World().Check()), "");
}

TEST(Check, FindsEachDefectOnceAndNothingElse) {
  std::string ids;
  for (const Defect& defect : kDefects) {
    World world;
    defect.make(world);
    EXPECT_EQ(Told(world.Check()), defect.told);
    ids += defect.told.substr(0, defect.told.find(':')) + " ";
  }
  for (const Check& check : AllChecks()) {
    EXPECT_NE(ids.find(std::string(check.id) + " "), std::string::npos) << check.id;
  }
}

TEST(Check, LeavesHealthyVariationsAlone) {
  const std::vector<std::function<void(World&)>> kVariations = {
      [](World& w) { w.Install(kTool, "2.0", "win32", "%SystemRoot%\\system32\\Tool.dll"); },
      [](World& w) { w.Install(kTool, "2.0", "win32", kToolFile + "\\3"); },
      [](World& w) {
        w.till.Line("Reference=*\\G" + kTool + "#1.9#0#Tool.dll#Tool"),
            w.Install(kTool, "1.a", "win32", kToolFile);
      },
      [](World& w) {
        w.Rewrite(Group::Path("Till"), kToolFile, "..\\..\\WINDOWS\\SysWOW64\\tool.dll");
      },
      [](World& w) { w.Rewrite(Group::Path("Core"), "Old.cmp", "..\\Bin\\Core.dll"); },
      [](World& w) {
        w.Rewrite(Group::Path("Core"), "CompatibleMode=\"2\"", "CompatibleMode=\"1\"");
      },
      [](World& w) { w.till.Line("Class=Core; ..\\Core\\Core.cls"); },
      [](World& w) { w.Rewrite(Group::Path("Till"), "ExeName32=\"Till.exe\"\r\n", ""); },
  };
  for (std::size_t i = 0; i < kVariations.size(); ++i) {
    World world;
    kVariations[i](world);
    EXPECT_EQ(Told(world.Check()), "") << i;
  }
}

TEST(Check, GathersWhatHasOneCause) {
  World world;
  for (int i = 0; i < 10'000; ++i) {
    const std::string name = "Module" + std::to_string(i);
    world.till.Line("Module=" + name + "; Gone\\" + name + ".bas");
    if (i == 20) i = 9'990;
  }
  EXPECT_EQ(Told(world.Check({{"source-missing"}, {}})),
            "source-missing: 30 sources are missing in C:\\Group\\Till\\Gone: Module0.bas, "
            "Module1.bas, Module2.bas and 27 others");
}

TEST(Check, ReadsTheListOfIgnoredChecks) {
  World world;
  world.platform.files.AddFile(
      "C:\\Group\\.gorbexcheck",
      " circle # known\r\n\r\n#\nline-ends\nnonsense\n" + std::string(99, 'x'));
  const auto listed = IgnoredIn(world.platform.files, "C:\\Group");
  EXPECT_EQ(listed.ids, (std::vector<std::string>{"circle", "line-ends"}));
  EXPECT_EQ(listed.problems,
            (std::vector<std::string>{"C:\\Group\\.gorbexcheck, line 5: unknown check \"nonsense\"",
                                      "C:\\Group\\.gorbexcheck, line 6: unknown check \"" +
                                          std::string(40, 'x') + "\""}));
}

TEST(Check, ListsItsFindings) {
  World world;
  world.Rewrite(Group::Path("Core"), "CompatibleMode=\"2\"", "CompatibleMode=\"0\"");
  world.platform.files.Remove("C:\\Group\\Core\\Core.cls");
  world.platform.files.Remove("C:\\VB\\VB6.EXE");
  const std::string file = world.group.BuildProject(world.lines);
  Program program(world.platform.Services(), world.dialogs);
  static_cast<void>(program.start.ReadState());
  ASSERT_TRUE(program.buildProject.OpenProject(file));
  EXPECT_EQ(program.checkList.ProblemsAtStart(), "2 problems: Check...");
  frmCheck& form = program.checkForm;
  program.options.Editor = "edit +%LINE%";
  program.window.menu.mnuToolsCheck.Execute();
  const auto places = [&] {
    std::string text;
    for (const auto& row : form.lvwFindings.Rows()) text += row->Text() + " ";
    return text;
  };
  EXPECT_TRUE(form.visible.Get());
  EXPECT_EQ(form.summary.Get(), "2 errors, 1 warning");
  EXPECT_EQ(places(), "Group.bpf Core.vbp:8 Core.vbp:5 ");
  form.rowActivated.Emit();  // no project is concerned: the file is opened
  EXPECT_EQ(world.platform.journal.back(), "start edit|+1|" + file);
  form.lvwFindings.Select(&form.lvwFindings.At(2));
  form.rowActivated.Emit();
  EXPECT_EQ(program.window.tvwProjects.Selected()->Text(), Group::Path("Core"));
  form.cmdOpen.Execute();
  EXPECT_EQ(world.platform.journal.back(), "start edit|+8|" + Group::Path("Core"));
  form.headingClicked.Emit(check_column::kProject);
  EXPECT_EQ(places(), "Core.vbp:8 Core.vbp:5 Group.bpf ");
  form.headingClicked.Emit(check_column::kProject);
  EXPECT_EQ(places(), "Group.bpf Core.vbp:8 Core.vbp:5 ");
  world.platform.files.AddFile("C:\\Group\\.gorbexcheck",
                               "compiler-missing\nsource-missing\nnot-compatible\n?\n");
  form.cmdCheck.Execute();
  EXPECT_EQ(places(), "");
  EXPECT_EQ(form.summary.Get(),
            "No problem found; C:\\Group\\.gorbexcheck, line 4: unknown check \"?\"");
  EXPECT_FALSE(form.cmdGoTo.enabled.Get());
}

TEST(Check, IsExplainedOnItsPage) {
  std::ifstream file(GORBEX_CHECKS_PAGE);
  std::stringstream page;
  page << file.rdbuf();
  const std::string text = page.str();
  std::size_t sections = 0;
  for (auto at = text.find("\n### "); at != std::string::npos; at = text.find("\n### ", at + 1)) {
    ++sections;
  }
  EXPECT_EQ(sections, AllChecks().size());
  const auto warnings = text.find("\n## Warnings");
  for (const Check& check : AllChecks()) {
    const auto at = text.find("\n### " + std::string(check.id) + "\n");
    ASSERT_NE(at, std::string::npos) << check.id;
    EXPECT_EQ(at > warnings, check.severity == Severity::Warning) << check.id;
    const auto end = std::min(text.find("\n##", at + 1), text.size());
    for (const char* part : {"[", "*Cause:*", "*Remedy:*"}) {
      EXPECT_LT(text.find(part, at), end) << check.id << " " << part;
    }
  }
}

}  // namespace
}  // namespace gorbex::test
