#include "core/project_loader.h"

#include "tests/support/program_fixture.h"

namespace gorbex::test {
namespace {

using ProjectLoaderTest = ProgramFixture;

TEST_F(ProjectLoaderTest, BranchCarriesTheKeySchemeAndTheNodeOfItsProjectIsSelected) {
  auto& core = group.Library("Core").Line("Reference=*\\G{B}#1#0#C:\\b.tlb#B");
  core.Line("Object={C}#1.0#0; c.ocx").Line("Form=f.frm").Line("Class=k; k.cls");
  for (int n = 1; n <= 10; ++n) core.Line("P" + std::to_string(n) + "=");
  platform.files.AddFile("C:\\Group\\Core\\mssccprj.scc", "SCC_Project_Name = \"$/Core\", X");
  ASSERT_TRUE(program.reader.ReadProject(core.Path()));
  std::string nodes;
  for (const auto& node : NodesOf(program.window.tvwProjects)) {
    nodes += node->Key() + " < " + (node->Parent() == nullptr ? "" : node->Parent()->Key());
    nodes.append(" ").append(ImageKey(node->ImageOf())).append(" ").append(node->Text());
    nodes += (node->Tag().empty() ? "" : " #" + std::string(node->Tag())) + "\n";
  }
  for (auto at = nodes.find(core.Path()); at != nodes.npos; at = nodes.find(core.Path())) {
    nodes.replace(at, core.Path().size(), "@");
  }
  std::string expected =
      "root <  vbgroup GorbexBuilder Projects\n"
      "x)@ < root vbproject @\n"
      "r)@ < x)@ vbreference References\n"
      "r-1@ < r)@ invalidreference *\\G{B}#1#0#C:\\b.tlb#B #{B}\n"
      "o)@ < x)@ vbreference Objects\n"
      "o-1@ < o)@ invalidreference {C}#1.0#0; c.ocx #{C}\n"
      "m)@ < x)@ vbform Members\n"
      "m-1@ < m)@ vbform C:\\Group\\Core\\f.frm\n"
      "u-1@ < m)@ vbclass k.cls\n"
      "i)@ < x)@ notepad Project Properties\n";
  for (int n = 1; n <= 10; ++n) {
    expected += "i" + std::to_string(n) + "@ < i)@ notepad P" + std::to_string(n) + "=\n";
  }
  EXPECT_EQ(nodes, expected);
  EXPECT_EQ(program.window.tvwProjects.Selected()->Text(), core.Path());
  EXPECT_EQ(program.window.ProjectMembers.Item(core.Path()).VSSProject, "$/Core");
  EXPECT_EQ(program.window.lvwData.Tag(), core.Path());
}

TEST_F(ProjectLoaderTest, FailedReadsLeaveNoRecordAndAPathIsReadOnce) {
  const std::string path = group.Library("Core").Path();
  const std::string binding = "C:\\Group\\Core\\mssccprj.scc";
  auto& projects = program.window.ProjectMembers;
  auto& tree = program.window.tvwProjects;
  for (const std::string bad : {"C:\\Group\\Core", "C:\\none.vbp", "", "?:*"}) {
    EXPECT_FALSE(program.reader.ReadProject(bad)) << bad;
  }
  platform.files.AddFile(binding, "");
  platform.files.Fail(FileOperation::Read, binding, ErrorNumber::PermissionDenied);
  EXPECT_FALSE(program.reader.ReadProject(path));
  EXPECT_EQ(projects.Count(), 0U);
  EXPECT_EQ(NodesOf(tree).size(), 1U);

  EXPECT_TRUE(program.reader.ReadProject(path));
  EXPECT_TRUE(program.reader.ReadProject("c:\\group\\core\\core.vbp"));
  platform.files.Fail(FileOperation::Read, path, ErrorNumber::PermissionDenied);
  EXPECT_TRUE(program.reader.ReadProject(path));
  EXPECT_EQ(projects.Count(), 2U);
  EXPECT_EQ(NodesOf(tree).size(), 11U);

  projects.Remove(path);
  EXPECT_FALSE(program.reader.ReadProject(path)) << "its nodes are still there";
  EXPECT_EQ(projects.Find(path), nullptr);
  EXPECT_EQ(Effects(), Journal{}) << "no message";
}

TEST_F(ProjectLoaderTest, RowsAreFoundByTheirKeys) {
  const std::string lines = "Reference=a\r\nReference=b\r\nClass=c\r\nx=1\r\n";
  std::string rows;
  for (int n = 1; n <= 12; ++n) rows += "x=" + std::to_string(n) + "\r\n";
  platform.files.AddFile("p.vbp", rows);
  platform.files.AddFile("q.vbp", lines);
  auto& tree = program.window.tvwProjects;
  ASSERT_TRUE(program.reader.ReadProject("p.vbp"));
  EXPECT_EQ(tree.Item("i12p.vbp").Text(), "x=12");
  EXPECT_EQ(tree.Find("i13p.vbp"), nullptr);
  for (const char* key : {"i0p.vbp", "i99999999999999999999999p.vbp", "ip.vbp", "i12", ""}) {
    EXPECT_EQ(tree.Find(key), nullptr) << key;
  }
  const auto count = NodesOf(tree).size();

  ASSERT_TRUE(program.reader.ReadProject("q.vbp"));
  EXPECT_EQ(tree.Item("u-1q.vbp").Parent()->Key(), "m)q.vbp");
  tree.Select(&tree.Item("r-2q.vbp"));
  tree.Remove("r-1q.vbp");
  EXPECT_EQ(tree.Find("r-1q.vbp"), nullptr);
  EXPECT_EQ(tree.Selected(), tree.Find("r-2q.vbp")) << "the others keep their numbers";
  tree.Remove("x)q.vbp");
  EXPECT_EQ(tree.Selected(), nullptr);
  EXPECT_EQ(tree.Find("r-2q.vbp"), nullptr);
  EXPECT_EQ(NodesOf(tree).size(), count);
}

TEST_F(ProjectLoaderTest, HostileFilesAreReadInLinearTime) {
  const auto many = [](char letter) { return std::string(1 << 20, letter); };
  std::string fields, lines;
  for (int n = 0; n < 5000; ++n) fields += "#{x};";
  for (int n = 0; n < 5000; ++n) lines += "Reference=*\\G{A}#1#0#" + std::to_string(n) + "#\r\n";
  int files = 0;
  const auto start = std::chrono::steady_clock::now();
  for (const std::string& text :
       {std::string(), many('\0'), many('='), many('\r'), many('a') + "=" + many('b'), lines,
        "Reference=*\\G{" + many('a') + "}#" + many('1') + "#0#" + many('x'),
        "Object=" + fields + "\r\nReference=*\\" + fields,
        "ExeName32=" + many('a') + "\r\nName=" + many('"'),
        std::string("Reference=\r\nObject=\r\nReference=#\r\nObject={\r\nReference=*\\\r\n")}) {
    const std::string path = "C:\\h" + std::to_string(++files) + ".vbp";
    platform.files.AddFile(path, text);
    EXPECT_TRUE(program.reader.ReadProject(path)) << files;
  }
  program.marking.mnuToolsDependancies_Click();
  EXPECT_LT(std::chrono::steady_clock::now() - start, std::chrono::seconds(20));
  EXPECT_EQ(Effects(), Journal({"mkdir C:\\Program Files\\GorbexBuilder\\logs",
                                "append C:\\Program Files\\GorbexBuilder\\Logs\\04032026.log"}));
}

}  // namespace
}  // namespace gorbex::test
