#include "core/text.h"

#include <array>

#include <gtest/gtest.h>

#include "platform/runtime_error.h"
#include "platform/windows_path.h"

namespace gorbex::test {
namespace {

using Cases = std::vector<std::pair<std::string, double>>;
constexpr double kError = -12345;  ///< in a table: error 6, or 13 for a text that is not a flag

template <class Conversion>
void Expect(const Conversion& convert, int errorNumber, const Cases& cases) {
  for (const auto& [text, value] : cases) {
    try {
      EXPECT_EQ(convert(text), value) << text;
    } catch (const RuntimeError& error) {
      EXPECT_EQ(std::pair(error.Number(), value), std::pair(errorNumber, kError)) << text;
    }
  }
}

TEST(Text, NumericValueReadsTheNumberAtTheStart) {
  Expect(NumericValue, 6,
         {{"", 0},           {"7a", 7},          {"a7", 0},          {" 1 2 ", 12},
          {"-3.5x", -3.5},   {"+4", 4},          {"--4", 0},         {".5", 0.5},
          {"5.", 5},         {".", 0},           {"1e3", 1000},      {"1d2", 100},
          {"1e", 1},         {"1e-x", 1},        {"e5", 0},          {"1e-999", 0},
          {"1e999", kError}, {"1,5", 1},         {"&HFF", 255},      {"&hFFFF", -1},
          {"&O17", 15},      {"&HFFFF&", 65535}, {"&H10000", 65536}, {"&H1FFFFFFFF", kError},
          {"&", 0},          {"&HG", 0},         {"inf", 0},         {"nan", 0},
          {"\t\n9", 9},      {"1\r2", 1}});
}

TEST(Text, ShortenedKeepsTheBeginningTheEndAndTheNumberLeftOut) {
  const std::string line = std::string(30, 'x') + "\r\n";
  const std::pair<std::string, std::string> cases[] = {
      {"short", "short"},
      {std::string(200, 'a') + std::string(200, 'z'),
       std::string(50, 'a') + "\r\n... 300 characters left out ...\r\n" + std::string(50, 'z')},
      {line + line + line + "end of it",
       line + "... 32 characters left out ...\r\n" + line + "end of it"}};
  for (const auto& [text, shortened] : cases) EXPECT_EQ(Shortened(text, 100), shortened) << text;
}

TEST(Text, WholeNumbersRoundHalvesToEvenAndOverflow) {
  EXPECT_EQ(ToLong(2.5), 2);
  EXPECT_EQ(ToLong(3.5), 4);
  EXPECT_EQ(ToLong(-2147483648.4), INT32_MIN);
  EXPECT_THROW((void)ToLong(2147483647.5), RuntimeError);
  EXPECT_EQ(ToInteger(32767.4), 32767);
  EXPECT_THROW((void)ToInteger(32768), RuntimeError);
}

TEST(Text, FlagsAreWordsOrNumbers) {
  for (const auto* text : {"True", " true ", "-1", "0.5"}) Expect(ToFlag, 13, {{text, 1}});
  for (const auto* text : {"fALSE", "0", "0.0"}) Expect(ToFlag, 13, {{text, 0}});
  for (const auto* text : {"", "yes", "1x", "inf", "nan"}) Expect(ToFlag, 13, {{text, kError}});
}

TEST(WindowsPath, IsResolvedFromAFolderAndStaysInItsDriveOrShare) {
  using Case = std::array<std::string, 3>;
  for (const auto& [folder, path, resolved] :
       {Case{"C:\\A\\B", "..\\.\\c/d.vbp", "C:\\A\\c\\d.vbp"},
        {"C:\\A", "..\\..\\..", "C:\\"},
        {"C:", "x", "C:\\x"},
        {"C:\\A", "d:\\\\x\\", "d:\\x"},
        {"D:\\A", "\\x", "D:\\x"},
        {"\\\\s\\h\\A", "..\\..\\..\\x", "\\\\s\\h\\x"},
        {"\\\\s\\h\\A\\B", "/x", "\\\\s\\h\\x"},
        {"C:\\A", "\\\\s\\h\\..\\x", "\\\\s\\h\\x"},
        {"", "a\\..\\..\\x", "..\\x"},
        {"", "", ""},
        {"C:\\A", "", "C:\\A"},
        {"", "\\x", "\\x"}}) {
    EXPECT_EQ(ResolvedPath(folder, path), resolved) << folder << " and " << path;
  }
}

}  // namespace
}  // namespace gorbex::test
