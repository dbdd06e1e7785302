#include "core/failure_place.h"

#include <gtest/gtest.h>

#include "tests/support/memory_file_system.h"

namespace gorbex::test {
namespace {

const std::string kForm =
    "VERSION 5.00\r\nObject = \"{0}#1.0#0\"; \"A.OCX\"\r\nBegin VB.Form Cart\r\n"
    "   Begin VB.Label Sum\r\n      BeginProperty Font\r\n      EndProperty\r\n   End\r\nEnd\r\n"
    "Attribute VB_Name = \"Cart\"\r\nOption Explicit\r\nPublic Sub Pay()\r\n"
    "Attribute Pay.VB_Description = \"Pays\"\r\n    Attribute = 1\r\nEnd Sub\r\n";

TEST(FailurePlace, CountsLinesAsEditorsDo) {
  struct Case {
    std::string source;
    std::size_t codeLine;
    std::optional<std::size_t> line;
  };
  const Case cases[] = {
      {kForm, 0, 10},
      {kForm, 1, 11},
      {kForm, 2, 13},
      {kForm, 4, 15},
      {kForm, 5, std::nullopt},
      {"Attribute VB_Name = \"m\"\nSub Main()\nEnd Sub", 1, 3},
      {"VERSION 1.0 CLASS\r\nBEGIN\r\n  MultiUse = -1\r\nEND\r\nattribute VB_Name = \"c\"\r\n", 0,
       6},
      {"VERSION 5.00\r\nBegin VB.Form Torn\r\n", 0, 3},
      {"", 0, 1},
      {"", 1, std::nullopt}};
  for (const Case& each : cases) {
    EXPECT_EQ(LineInFile(each.source, each.codeLine), each.line) << each.codeLine << each.source;
  }
}

TEST(FailurePlace, NamesTheSourceOrElseTheProject) {
  Journal journal;
  MemoryFileSystem files(journal);
  files.AddFile("C:\\It's mine\\Cart.frm", kForm);
  files.AddFile("C:\\Setup.exe", "it is there");
  struct Case {
    std::string log, place;
    std::string problem{};
  };
  const Case cases[] = {
      {"\r\nCompile Error in File 'C:\\It's mine\\Cart.frm', Line 2 : Next without For\r\n"
       "Build of 'P.exe' failed.\r\n",
       "C:\\It's mine\\Cart.frm(13): error: Next without For"},
      {"compile error in file 'c:\\it's mine\\cart.frm', Line 99999999999999999999 : x",
       "C:\\P.vbp(1): error: compile error in file 'c:\\it's mine\\cart.frm', Line "
       "99999999999999999999 : x"},
      {"Compile Error in File 'C:\\Gone.cls', Line 2 : Syntax error",
       "C:\\P.vbp(1): error: Compile Error in File 'C:\\Gone.cls', Line 2 : Syntax error"},
      {"Compile Error in File 'C:\\Setup.exe', Line 0 : Run me",
       "C:\\P.vbp(1): error: Compile Error in File 'C:\\Setup.exe', Line 0 : Run me"},
      {"\r\nErrors during load. Refer to 'C:\\It's mine\\Cart.log' for details\r\n"
       "'C:\\Cart.frm' could not be loaded.",
       "C:\\P.vbp(1): error: Errors during load. Refer to 'C:\\It's mine\\Cart.log' for details"},
      {"'C:\\NOPE.OCX' could not be loaded",
       "C:\\P.vbp(1): error: 'C:\\NOPE.OCX' could not be loaded"},
      {"Compile Error in File '.\\Gone\\..\\It's mine\\Cart.frm', Line 0 : x",
       "C:\\It's mine\\Cart.frm(10): error: x"},
      {"Compile Error in File 'C:\\Gone\\..\\It's mine\\Cart.frm', Line 0 : " +
           std::string(9000, 'x'),
       "C:\\It's mine\\Cart.frm(10): error: " + std::string(500, 'x') +
           "  ... 8000 characters left out ...  " + std::string(500, 'x')},
      {"\r\n", "C:\\P.vbp(1): error: the compiler wrote an empty result log"},
      {"", "C:\\P.vbp(1): error: there is  no compiler", "there is\r\nno compiler"}};
  for (const Case& each : cases) {
    const FailurePlace place = PlaceOfFailure(files, "C:\\P.vbp", each.log, each.problem);
    EXPECT_EQ(place.file + FailureText(place), each.place);
  }
  files.AddFile("C:\\Cart.frm", kForm);
  const auto loaded = PlaceOfFailure(files, "C:\\P.vbp", cases[4].log, "");
  EXPECT_EQ(loaded.file, "C:\\Cart.frm");
  EXPECT_EQ(loaded.line, std::nullopt);
}

}  // namespace
}  // namespace gorbex::test
