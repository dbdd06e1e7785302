#include "core/project_file.h"

#include <gtest/gtest.h>

namespace gorbex::test {
namespace {

std::string Joined(const std::vector<std::string>& texts) {
  std::string joined;
  for (const auto& text : texts) joined += "<" + text + ">";
  return joined;
}

std::string Facts(const std::string& text) {
  const auto [m, properties] = ParseProjectFile("C:\\P\\a.vbp", text);
  return m.MemberType + ";" + m.Name + ";" + m.EXEName + ";" + m.BuildName + ";" + m.Version + ";" +
         m.Compatibility + ";" + (m.BinaryCompat ? "binary" : "") + ";" + Joined(m.Members) + ";" +
         Joined(m.UserControls) + ";" + Joined(m.Refs) + Joined(m.Objects) + ";" +
         Joined(properties);
}

TEST(ProjectFile, EveryLineGoesWhereTheRulesPutIt) {
  const std::vector<std::pair<std::string, std::string>> cases = {
      {"Type=OleDll\r\nName=\"Co\"\"re\"", "OleDll;Core;;;..;;;;;;"},
      {"[MS Server]\r\nName=A\r\nTitle=x=y\r\n\r\nType=Exe",
       ";;;;..;;;;;;<[MS Server]\r\nName=A><Title=x=y><\r\nType=Exe>"},
      {"MAJORVER=1\r\nMinorVer=02\r\nRevisionVer=7\r\n", ";;;;1.02.;;;;;;<RevisionVer=7>"},
      {"MajorVer=1\r\nRevision=7", ";;;;1..7;;;;;;"},
      {"ExeName32=\"A.dll\"\r\nPath32=\"..\\Bin\"", ";;A.dll;..\\Bin\\A.dll;..;;;;;;"},
      {"Path32=C:\\\r\nExeName32=A.dll\r\n", ";;A.dll;C:\\\\;..;;;;;;"},
      {"CompatibleMode=\"2\"\r\nCompatibleEXE32=o.dll",
       ";;;;..;o.dll;binary;;;;<CompatibleMode=2>"},
      {"CompatibleMode=2\r\nCompatibleMode=1", ";;;;..;;;;;;<CompatibleMode=2><CompatibleMode=1>"},
      {"Module=m;  m.bas \r\nForm=f.frm\r\nForm= g.frm\r\nForm=a;b;c",
       ";;;;..;;;<C:\\P\\m.bas><C:\\P\\f.frm><C:\\P\\ g.frm><C:\\P\\b;c>;;;"},
      {"Class=c; ..\\Sh\\c.cls\r\nUserControl=u.ctl", ";;;;..;;;;<c.cls><u.ctl>;;"},
      {"Object={A}\r\nReference=\"r\"\r\nReference=s", ";;;;..;;;;;<r><s><{A}>;"},
      {"Type=Exe\nName=A\n", "Exe\nName=A\n;;;;..;;;;;;"},
      {"Name=A\r", ";A;;;..;;;;;;"},
      {"no pairs at all\r\n", ";;;;..;;;;;;"}};
  for (const auto& [text, facts] : cases) EXPECT_EQ(Facts(text), facts) << text;
}

TEST(ProjectFile, BindingGivesTheSpecWithoutQuotes) {
  const std::vector<std::pair<std::string, std::string>> cases = {
      {"[SCC]\r\nSCC_Project_Name = \"$/Core\", ABCD\r\nSCC_Aux_Path = x", "$/Core"},
      {"SCC_Project_Name = \"$/Core\"\r\nmore", "$/Core\r\nmore"},
      {"SCC_Project_Name=\"$/Core\", A", ""},
      {"scc_project_name = a", ""},
      {"SCC_Project_Name = ", ""}};
  for (const auto& [text, spec] : cases) EXPECT_EQ(BoundProject(text), spec) << text;
}

TEST(ProjectFile, TheCompilerCannotLoadSomeFiles) {
  const std::pair<std::string, const char*> cases[] = {
      {"Type=Exe\r\nName=A\r\n", nullptr},
      {"Type=Exe", nullptr},
      {"", "the file is empty"},
      {std::string(3, '\0'), "zero bytes"},
      {"Type=Exe\nName=A\n", "LF only; the compiler wants CR LF"},
      {"Type=Exe\rName=A", "CR only"},
      {"\xEF\xBB\xBFType=Exe\r\n", "byte order mark"},
      {"Type\r\n", "no key=value line"}};
  for (const auto& [text, problem] : cases) {
    const std::string told = ProjectFileProblem(text).value_or("");
    EXPECT_EQ(told.empty(), problem == nullptr) << text;
    EXPECT_NE(told.find(problem == nullptr ? "" : problem), std::string::npos) << told;
  }
}

}  // namespace
}  // namespace gorbex::test
