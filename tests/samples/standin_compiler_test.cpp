#include <gtest/gtest.h>

#include <string>
#include <string_view>
#include <variant>
#include <vector>

#include "compiler/block_check.h"
#include "compiler/command_line.h"
#include "compiler/component_image.h"
#include "compiler/identity.h"
#include "compiler/references.h"
#include "compiler/source_text.h"

namespace gorbex::standin {
namespace {

constexpr std::string_view kClassHeader =
    "VERSION 1.0 CLASS\nBEGIN\n  MultiUse = -1  'True\nEND\nAttribute VB_Name = \"C\"\n"
    "Attribute VB_Exposed = True\n";

std::string WithLineEnds(std::string_view text) {
  std::string lines;
  for (const char c : text) {
    if (c == '\n') lines += '\r';
    lines += c;
  }
  return lines;
}

// "line : text" of the first fault, as the log shows it.
std::string FaultOf(std::string_view source) {
  const auto code = CodeView(WithLineEnds(source));
  if (!code) return "no code";
  const auto fault = CheckBlocks(*code);
  return fault ? std::to_string(fault->line) + " : " + fault->text : "";
}

struct SourceCase {
  std::string source;
  std::string fault;
};

TEST(StandInCompiler, FindsTheFirstBlockThatDoesNotNest) {
  const std::string header(kClassHeader);
  const std::vector<SourceCase> cases = {
      {"", ""},
      {"Sub A()\nNext\nEnd Sub\n", "1 : Next without For"},
      {header + "Option Explicit\nSub A()\nAttribute A.VB_UserMemId = 0\nLoop\nEnd Sub\n",
       "2 : Loop without Do"},
      {"VERSION 5.00\nBegin VB.Form F\n  BeginProperty Font\n  EndProperty\nEnd\nSub A()\n",
       "0 : Expected End Sub"},
      {"VERSION 5.00\nBegin VB.Form F\n", "no code"},
      {"Sub A()\nFor i = 1 To 2\nIf i Then\nNext\nEnd Sub\n", "3 : Next without For"},
      {"Sub A()\nFor i = 1 To 2\nFor j = 1 To 2\nNext j, i\nEnd Sub\n", ""},
      {"Sub A()\nFor i = 1 To 2\nNext j, i\nEnd Sub\n", "2 : Next without For"},
      {"Sub A()\nFor Each x In y\nEnd Sub\n", "2 : For without Next"},
      {"Sub A()\nIf x Then\nEnd Sub\n", "2 : Block If without End If"},
      {"Sub A()\nIf x Then y = 1\nEnd If\nEnd Sub\n", "2 : End If without block If"},
      {"Sub A()\nIf x Then y = 1: For i = 1 To 2: Next\nEnd Sub\n", ""},
      {"Sub A()\nIf a _\n  And b Then\nWend\nEnd Sub\n", "3 : Wend without While"},
      {"Sub A()\nIf x Then ' why\nElseIf y Then\nElse\nElse\nEnd If\nEnd Sub\n",
       "4 : Else without If"},
      {"Sub A()\nIf x = \" Then \" GoTo 10\n10 If y\nEnd Sub\n", "2 : Expected: Then or GoTo"},
      {"Sub A()\nDo While x\nWend\nEnd Sub\n", "2 : Wend without While"},
      {"Sub A()\nDo\nLoop Until x\nWhile x\nEnd Sub\n", "4 : While without Wend"},
      {"Sub A()\nSelect Case x\nCase 1: y\nCase Else\nEnd With\nEnd Sub\n",
       "4 : End With without With"},
      {"Sub A()\nCase 1\nEnd Sub\n", "1 : Case without Select Case"},
      {"Sub A()\nWith x\n.For = 1\nEnd Function\nEnd Sub\n", "3 : Expected End With"},
      {"Private Sub A()\nPublic Function B()\nEnd Function\n", "1 : Expected End Sub"},
      {"Property Get Type() As Long\nType = 1\nExit Property\nEnd Property\n", ""},
      {"Private Type T\nType As Long\nNext As T\nEnd Enum\n", "3 : Expected End Type"},
      {"Public Enum E\nA = 1\nEnd Enum\nEnd Sub\n",
       "3 : Only comments may appear after End Sub, End Function, or End Property"},
      {"For i = 1 To 2\n", "0 : Invalid outside procedure"},
      {"Private Declare Function F Lib \"x\" () As Long\nDim i ' For\nRem Sub B(): Loop\n", ""},
      {"' a remark that goes on _\nNext\nSub A()\nEnd Sub\n", ""},
      {"Sub A()\nIf d > #1/2/1999 12:30:00 PM# Then\nx Name:=1\nEnd If\nEnd Sub\n", ""},
      {"#If Win32 Then\nSub A()\n#Else\nSub A(x)\n#End If\nEnd Sub\n", ""},
      {std::string(1 << 20, ' ') + std::string(1 << 20, ':'), ""},
      {std::string(4096, '\0'), ""},
  };
  for (const auto& [source, fault] : cases) {
    EXPECT_EQ(FaultOf(source), fault) << source.substr(0, 200);
  }
}

struct ArgumentCase {
  std::vector<std::string> arguments;
  std::string outcome;
};

std::string OutcomeOf(const std::vector<std::string>& arguments) {
  const auto parsed = ParseCommandLine(arguments);
  if (const auto* error = std::get_if<UsageError>(&parsed)) return error->message;
  const auto& line = std::get<CommandLine>(parsed);
  const std::vector<std::string> tasks = {"make", "run", "install", "identity"};
  return tasks[static_cast<std::size_t>(line.task)] + "|" + line.project + "|" + line.resultLog +
         "|" + line.outputFolder + "|" + line.name;
}

TEST(StandInCompiler, TakesTheProjectBeforeOrBehindItsSwitches) {
  const std::vector<ArgumentCase> cases = {
      {{"C:\\P.vbp", "/make", "/out", "C:\\L", "/outdir", "C:\\Bin\""},
       "make|C:\\P.vbp|C:\\L|C:\\Bin|"},
      {{"/MAKE", "P.vbp", "/Out", "L", "/d", "A=1:B=0"}, "make|P.vbp|L||"},
      {{"/out", "L", "/make", "P.vbp"}, "make|P.vbp|L||"},
      {{"P.vbp", "/run"}, "run|P.vbp|||"},
      {{"/RegServer"}, "install||||"},
      {{"/identity", "StoreCore"}, "identity||||StoreCore"},
      {{}, "Nothing to do: /make, /run, /regserver or /identity is missing"},
      {{"P.vbp", "/make"}, "The result log (/out FILE) is missing"},
      {{"/make", "/out", "L"}, "The project is missing"},
      {{"P.vbp", "/make", "/out"}, "A value is missing behind /out"},
      {{"P.vbp", "/make", "/out", "/outdir", "D"}, "A value is missing behind /out"},
      {{"P.vbp", "/make", "/run", "/out", "L"}, "More than one task"},
      {{"P.vbp", "Q.vbp", "/make"}, "More than one project: Q.vbp"},
      {{"P.vbp", "/makeall"}, "Unknown switch: /makeall"},
  };
  for (const auto& [arguments, outcome] : cases) EXPECT_EQ(OutcomeOf(arguments), outcome);
}

struct NameCase {
  std::string name;
  std::string uuid;
};

// Lengths around the end of a digest block (16 bytes of name space go before the name).
TEST(StandInCompiler, DerivesNameBasedIdentities) {
  constexpr Uuid kDomainNames = {0x6B, 0xA7, 0xB8, 0x10, 0x9D, 0xAD, 0x11, 0xD1,
                                 0x80, 0xB4, 0x00, 0xC0, 0x4F, 0xD4, 0x30, 0xC8};
  const std::vector<NameCase> cases = {
      {"www.example.com", "{2ED6657D-E927-568B-95E1-2665A8AEA6A2}"},
      {"python.org", "{886313E1-3B8A-5372-9B90-0C9AEE199E5D}"},
      {std::string(39, 'a'), "{5824F981-4282-59D4-9716-ACB6D741350E}"},
      {std::string(40, 'a'), "{39F39C20-DB47-5131-8879-62F8F67F9014}"},
      {std::string(48, 'a'), "{7280CC42-274A-5C4A-91FC-AE23F853EEB7}"},
      {std::string(200, 'a'), "{FE30BFA6-EF90-59B3-B108-118411D0F0AB}"},
  };
  for (const auto& [name, uuid] : cases) {
    EXPECT_EQ(BracedText(NameBasedUuid(kDomainNames, name)), uuid) << name;
  }
  EXPECT_EQ(FirstIdentity("STORECORE"), "{C433A241-A42E-5F7B-A729-08A8D9756204}");
  EXPECT_EQ(FirstIdentity("Caf\xC9"), "{AA4C3F03-EFD0-52EF-83F6-0EB8EC228894}");
  EXPECT_NE(RandomUuid(), RandomUuid());
}

TEST(StandInCompiler, ReadsBackTheIdentityOfWhatItBuilt) {
  const ComponentFacts facts{"StoreCore", "1.0.7", FirstIdentity("StoreCore"), "2.a"};
  const std::string image = ComponentImage(ImageKind::Library, facts);
  const auto found = ReadComponent(image);
  ASSERT_TRUE(found);
  EXPECT_EQ(found->library, facts.library);
  EXPECT_EQ(found->libraryVersion, facts.libraryVersion);
  EXPECT_FALSE(ReadComponent(image.substr(0, image.find("Library={") + 12)));
  EXPECT_FALSE(ReadComponent(std::string(4096, '\0')));
}

TEST(StandInCompiler, RefusesReferencesWithMissingFields) {
  const std::string guid = FirstIdentity("StoreCore");
  const auto reference = ParseReference("*\\G" + guid + "#2E.0#0#..\\Bin\\x.dll#");
  ASSERT_TRUE(reference);
  EXPECT_EQ(reference->version, "2e.0");
  const auto object = ParseObject(guid + "#16.1#0; X.OCX");
  ASSERT_TRUE(object);
  EXPECT_EQ(object->version, "10.1");
  EXPECT_EQ(object->file, "X.OCX");
  for (const std::string& value :
       {std::string(), std::string("*\\G"), "*\\G" + guid, "*\\G" + guid + "#1.0#0",
        "*\\G" + guid + "#1.0#0##", "*\\G" + guid + "#1#0#x.dll#",
        std::string("*\\G{1}#1.0#0#x.dll#"), "*\\G" + guid + "#1.99999#0#x.dll#",
        std::string(1 << 20, '#')}) {
    EXPECT_FALSE(ParseReference(value)) << value.substr(0, 80);
  }
  for (const auto& value : {guid, guid + "#1.0", guid + "#1.0#0", guid + "#1.0#0; "}) {
    EXPECT_FALSE(ParseObject(value)) << value;
  }
}

}  // namespace
}  // namespace gorbex::standin
