#include <gtest/gtest.h>

#include <string>
#include <tuple>
#include <variant>
#include <vector>

#include "compiler/block_check.h"
#include "compiler/command_line.h"
#include "compiler/component_image.h"
#include "compiler/declarations.h"
#include "compiler/identity.h"
#include "compiler/image_resources.h"
#include "compiler/make.h"
#include "compiler/references.h"
#include "compiler/source_text.h"
#include "compiler/type_library_image.h"
#include "platform/component/library_file.h"
#include "platform/component/pe_image.h"
#include "platform/runtime_error.h"
#include "tests/support/memory_file_system.h"
#include "tests/support/memory_registry.h"

namespace gorbex::standin {
namespace {

// "line : text" of the first fault, as the log shows it.
std::string FaultOf(const std::string& source) {
  std::string file;
  for (const char c : source) file += c == '\n' ? "\r\n" : std::string(1, c);
  const auto code = CodeView(file);
  if (!code) return "no code";
  const auto fault = CheckBlocks(*code);
  return fault ? std::to_string(fault->line) + " : " + fault->text : "";
}

using Cases = std::vector<std::pair<std::string, std::string>>;

TEST(StandInCompiler, FindsTheFirstBlockThatDoesNotNest) {
  const Cases cases = {
      {"VERSION 1.0 CLASS\nBEGIN\n  MultiUse = -1  'True\nEND\nAttribute VB_Name = \"C\"\nOption "
       "Explicit\n"
       "Sub A()\nAttribute A.VB_UserMemId = 0\nLoop\nEnd Sub\n",
       "2 : Loop without Do"},
      {"VERSION 5.00\nBegin VB.Form F\n  BeginProperty Font\n  EndProperty\nEnd\nSub A()\n",
       "0 : Expected End Sub"},
      {"Sub A()\nFor i = 1 To 2\nIf i Then\nNext\nEnd Sub\n", "3 : Next without For"},
      {"Sub A()\nFor i = 1 To 2\nNext j, i\nEnd Sub\n", "2 : Next without For"},
      {"Sub A()\nIf x Then y = 1\nEnd If\nEnd Sub\n", "2 : End If without block If"},
      {"Sub A()\nIf x Then y = 1: For i = 1 To 2: Next\nEnd Sub\n", ""},
      {"Sub A()\nIf a _\n  And b Then\nWend\nEnd Sub\n", "3 : Wend without While"},
      {"Sub A()\nIf x Then ' why\nElseIf y Then\nElse\nElse\nEnd If\nEnd Sub\n",
       "4 : Else without If"},
      {"Sub A()\nIf x = \" Then \" GoTo 10\n10 If y\nEnd Sub\n", "2 : Expected: Then or GoTo"},
      {"Sub A()\nSelect Case x\nCase 1: y\nCase Else\nEnd With\nEnd Sub\n",
       "4 : End With without With"},
      {"Sub A()\nWith x\n.For = 1\nEnd Function\nEnd Sub\n", "3 : Expected End With"},
      {"Property Get Type() As Long\nType = 1\nExit Property\nEnd Property\n", ""},
      {"Private Type T\nType As Long\nNext As T\nEnd Enum\n", "3 : Expected End Type"},
      {"Public Enum E\nA = 1\nEnd Enum\nEnd Sub\n",
       "3 : Only comments may appear after End Sub, End Function, or End Property"},
      {"Private Declare Function F Lib \"x\" () As Long\nDim i ' For\nRem Sub B(): Loop\n", ""},
      {"' a remark that goes on _\nNext\nSub A()\nEnd Sub\n", ""},
      {"Sub A()\nIf d > #1/2/1999 12:30:00 PM# Then\nx Name:=1\nEnd If\nEnd Sub\n", ""},
      {"#If Win32 Then\nSub A()\n#Else\nSub A(x)\n#End If\nEnd Sub\n", ""},
      {std::string(1 << 20, ' ') + std::string(1 << 20, ':'), ""},
  };
  for (const auto& [source, fault] : cases)
    EXPECT_EQ(FaultOf(source), fault) << source.substr(0, 200);
}

std::string OutcomeOf(const std::vector<std::string>& arguments) {
  const auto parsed = ParseCommandLine(arguments);
  if (const auto* error = std::get_if<UsageError>(&parsed)) return error->message;
  const auto& line = std::get<CommandLine>(parsed);
  const std::vector<std::string> tasks = {"make", "run", "install", "identity"};
  return tasks[static_cast<std::size_t>(line.task)] + "|" + line.project + "|" + line.resultLog +
         "|" + line.outputFolder + "|" + line.name;
}

TEST(StandInCompiler, TakesTheProjectBeforeOrBehindItsSwitches) {
  const std::vector<std::pair<std::vector<std::string>, std::string>> cases = {
      {{"C:\\P.vbp", "/make", "/out", "C:\\L", "/outdir", "C:\\Bin\""},
       "make|C:\\P.vbp|C:\\L|C:\\Bin|"},
      {{"/MAKE", "P.vbp", "/Out", "L", "/d", "A=1:B=0"}, "make|P.vbp|L||"},
      {{"P.vbp", "/run"}, "run|P.vbp|||"},
      {{"/RegServer"}, "install||||"},
      {{"/identity", "StoreCore"}, "identity||||StoreCore"},
      {{}, "Nothing to do: /make, /run, /regserver or /identity is missing"},
      {{"P.vbp", "/make"}, "The result log (/out FILE) is missing"},
      {{"/make", "/out", "L"}, "The project is missing"},
      {{"P.vbp", "/make", "/out", "/outdir", "D"}, "A value is missing behind /out"},
      {{"P.vbp", "/make", "/run", "/out", "L"}, "More than one task"},
      {{"P.vbp", "Q.vbp", "/make"}, "More than one project: Q.vbp"},
      {{"P.vbp", "/makeall"}, "Unknown switch: /makeall"},
  };
  for (const auto& [arguments, outcome] : cases) EXPECT_EQ(OutcomeOf(arguments), outcome);
}

// Lengths around the end of a digest block (16 bytes of name space go before the name).
TEST(StandInCompiler, DerivesNameBasedIdentities) {
  constexpr Uuid kDomainNames = {0x6B, 0xA7, 0xB8, 0x10, 0x9D, 0xAD, 0x11, 0xD1,
                                 0x80, 0xB4, 0x00, 0xC0, 0x4F, 0xD4, 0x30, 0xC8};
  const Cases cases = {
      {"www.example.com", "{2ED6657D-E927-568B-95E1-2665A8AEA6A2}"},
      {std::string(39, 'a'), "{5824F981-4282-59D4-9716-ACB6D741350E}"},
      {std::string(40, 'a'), "{39F39C20-DB47-5131-8879-62F8F67F9014}"},
      {std::string(200, 'a'), "{FE30BFA6-EF90-59B3-B108-118411D0F0AB}"},
  };
  for (const auto& [name, uuid] : cases)
    EXPECT_EQ(BracedText(NameBasedUuid(kDomainNames, name)), uuid) << name;
  EXPECT_EQ(FirstIdentity("STORECORE"), "{C433A241-A42E-5F7B-A729-08A8D9756204}");
  EXPECT_EQ(FirstIdentity("Caf\xC9"), "{AA4C3F03-EFD0-52EF-83F6-0EB8EC228894}");
}

TEST(StandInCompiler, RefusesReferencesWithMissingFields) {
  const std::string guid = FirstIdentity("StoreCore");
  EXPECT_EQ(ParseReference("*\\G" + guid + "#2E.0#0#..\\Bin\\x.dll#").value().version, "2e.0");
  EXPECT_EQ(ParseObject(guid + "#16.1#0; X.OCX").value().version, "10.1");
  for (const std::string& value :
       {std::string(), std::string("*\\G"), "*\\G" + guid, "*\\G" + guid + "#1.0#0",
        "*\\G" + guid + "#1.0#0##", "*\\G" + guid + "#1#0#x.dll#",
        std::string("*\\G{1}#1.0#0#x.dll#"), "*\\G" + guid + "#1.99999#0#x.dll#",
        std::string(1 << 20, '#')}) {
    EXPECT_FALSE(ParseReference(value)) << value.substr(0, 80);
  }
  for (const auto& value : {guid, guid + "#1.0", guid + "#1.0#0", guid + "#1.0#0; "})
    EXPECT_FALSE(ParseObject(value)) << value;
}

// "name As type" with the ways of use, then the enumerations.
std::string DeclaredIn(const std::string& source) {
  std::string file;
  for (const char c : source) file += c == '\n' ? "\r\n" : std::string(1, c);
  std::string text;
  const auto found = ReadDeclarations(file);
  for (const auto& each : found.properties) {
    text += each.name + " As " + each.type + " ";
    text += each.isVariable ? "v" : "";
    text += each.isReadable ? "g" : "";
    text += each.isWritable ? "l" : "";
    text += each.isSettable ? "s" : "";
    if (each.id) text += std::to_string(*each.id);
    text += ";";
  }
  for (const auto& each : found.enums) {
    text += each.name + "{";
    for (const auto& [name, value] : each.constants) text += name + std::to_string(value) + ",";
    text += "}";
  }
  return text;
}

TEST(StandInCompiler, FindsWhatClassesOffer) {
  const Cases cases = {
      {"Public A As Long, B$, C(9) As Byte, D\nPrivate E\nDim F As Long\n",
       "A As Long v;B As String v;D As  v;"},
      {"Public WithEvents A As VB.Form: Public B As New _\n  Lib.Thing\n",
       "A As Form v;B As Thing v;"},
      {"Public Const A = 1\nPublic Event B()\nPublic Sub C()\nEnd Sub\n", ""},
      {"Property Get A() As Date\nAttribute A.VB_UserMemId = 0\nEnd Property\n"
       "Public Property Let a(ByVal New_A As Date)\nEnd Property\n",
       "A As Date gl0;"},
      {"Public Property Set A(B As Object)\nEnd Property\nFriend Property Get C() As Long\n"
       "End Property\nPrivate Property Get D()\nEnd Property\n",
       "A As Object s;"},
      {"Property Get A(ByVal I As Long) As Long\nEnd Property\n"
       "Property Let A(ByVal I As Long, ByVal V As Long)\nEnd Property\n",
       ""},
      {"Enum E\nA\nB = &HFF&\nC\nD = A + 1\nF\nG = -2\nEnd Enum\nPrivate Enum H\nI\nEnd Enum\n",
       "E{A0,B255,C256,G-2,}"},
      {"Public Property Let A(\nEnd Property\nPublic\nProperty\nPublic Enum\nEnd Enum\n", "{}"},
  };
  for (const auto& [source, offer] : cases) EXPECT_EQ(DeclaredIn(source), offer) << source;
}

auto Said(const TypeLibrary& library, std::size_t index) {
  const auto& type = library.types.at(index);
  return std::tuple(library.guid, library.major, library.minor, library.flags, library.name,
                    library.helpString, type.kind, type.guid, type.flags, type.name,
                    type.defaultInterface);
}

TEST(StandInCompiler, WritesTypeLibrariesThatReadAsTheyWereMeant) {
  TypeLibrary library{FirstIdentity("P"), 2, 0xFFFE, 0, 2, false, "Caf\xC9", "", {}};
  for (std::size_t i = 1; i <= 100; ++i) {
    const std::string name(i, 'n');
    library.types.push_back({TypeKind::Dispatch, FirstIdentity("_" + name), "_" + name, 0x50, {}});
    library.types.push_back({TypeKind::Coclass, FirstIdentity(name), name, 2, 200 - 2 * i});
  }
  library.types.push_back({TypeKind::Enum, "", "Kinds", 0, {}});
  // Members that bear the names of types, and more of them than there are types.
  std::vector<LibraryMembers> members(300);
  members[0].properties = {{"N", ValueType::Text, 0, true, true, true}, {"p", ValueType::Date, 1}};
  members[200].constants = {{"kinds", 1}, {"k", -1}, {"kMost", 1 << 26}};
  for (const char* description : {"", "x", "Till and store"}) {
    library.helpString = description;
    const Resource resource{"TYPELIB", 0, 1, 0, TypeLibraryImage(library, members)};
    const auto image = WithResources(EmptyImage(ImageKind::Library), {resource});
    EXPECT_THROW(static_cast<void>(WithResources(image, {resource})), RuntimeError);
    const auto found = ReadTypeLibrary(FindPeResource(image, "TYPELIB").value());
    for (std::size_t i = 0; i < 201; ++i) ASSERT_EQ(Said(found.value(), i), Said(library, i)) << i;
  }
}

// A machine on which one project is built again and again.
struct Workshop {
  // The identities of library, class and interface of the project's first class, then the second.
  std::vector<std::string> Build(const std::string& mode, const std::vector<std::string>& classes) {
    std::string project = "Type=OleDll\r\nName=\"P\"\r\nCompatibleEXE32=\"Old.dll\"\r\n";
    project += "CompatibleMode=\"" + mode + "\"\r\n";
    for (const auto& name : classes) {
      project += "Class=X; " + name + ".cls\r\n";
      files.AddFile("C:\\" + name + ".cls", "Attribute VB_Name = \"" + name + "\"\r\n");
    }
    files.AddFile("C:\\P.vbp", project);
    EXPECT_TRUE(Make(files, registry, "C:\\P.vbp", "", foundation).built);
    const auto library = TypeLibraryOf(files, "C:\\P.dll").value();
    const auto guid = [&](std::size_t index) { return library.types.at(index).guid; };
    return {library.guid, guid(1), guid(0), guid(2 * classes.size() - 1)};
  }

  Foundation foundation{EmptyImage(ImageKind::Program), EmptyImage(ImageKind::Library)};
  test::Journal journal;
  test::MemoryFileSystem files{journal};
  test::MemoryRegistry registry{journal};
};

TEST(StandInCompiler, KeepsTheIdentitiesThatTheProjectsCompatibilityAsksFor) {
  const std::vector derived = {FirstIdentity("P"), FirstIdentity("P.A.Class"),
                               FirstIdentity("P.A.Interface"), FirstIdentity("P.B.Class")};
  const auto origins = [&](const auto& now, const auto& old) {
    std::string text = "nnnn";  // old, derived or new
    for (std::size_t i = 0; i < 4; ++i)
      text[i] = now[i] == old[i] ? 'o' : now[i] == derived[i] ? 'd' : 'n';
    return text;
  };
  for (const auto& [mode, fresh, rebuilt] : {std::tuple("", "nnnn", "nnnn"),
                                             {"0", "nnnn", "nnnn"},
                                             {"1", "dddd", "oonn"},
                                             {"2", "dddd", "ooon"}}) {
    Workshop shop;
    const auto old = shop.Build("0", {"A"});
    shop.files.AddFile("C:\\Old.dll", shop.files.Text("C:\\P.dll"));
    EXPECT_EQ(origins(shop.Build("0", {"A"}), old), "nnnn");
    EXPECT_EQ(origins(Workshop().Build(mode, {"A", "B"}), old), fresh) << mode;
    Workshop seeded[2];
    for (auto& each : seeded) each.foundation.identities = NewIdentities("seed");
    const auto first = seeded[0].Build("0", {"A"});
    EXPECT_EQ(seeded[1].Build("0", {"A"}), first);
    EXPECT_EQ(origins(seeded[0].Build("0", {"A"}), first), "nnnn");
    const auto now = shop.Build(mode, {"a", "B"});
    EXPECT_EQ(origins(now, old), rebuilt) << mode;
    EXPECT_EQ(shop.registry.Text(RegistryRoot::ClassesRoot, "P.B\\Clsid", ""), now.back());
  }
}

}  // namespace
}  // namespace gorbex::standin
