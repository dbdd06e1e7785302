#include "platform/code_page.h"

#include <gtest/gtest.h>

#include "platform/runtime_error.h"
#include "system_bench.h"
#include "tests/platform/outcome.h"

namespace gorbex::test {
namespace {

class CodePages : public testing::Test {
 protected:
  ~CodePages() override { CodePage::Use(CodePage::Windows1252()); }
};

TEST_F(CodePages, SpeakAndFoldTheirOwnLetters) {
  struct Case {
    unsigned number;
    std::string capitals;
    std::string small;
    std::string utf8;  ///< of the capitals
  };
  const Case cases[] = {
      {1250, "I\xA3\xD3\x8C\x8F", "i\xB3\xF3\x9C\x9F", "I\u0141\u00D3\u015A\u0179"},
      {1251, "I\xC6\xA8\xAF\xA5", "i\xE6\xB8\xBF\xB4", "I\u0416\u0401\u0407\u0490"},
      {1252, "I\xC9\x8A\x9F\xD7", "i\xE9\x9A\xFF\xD7", "I\u00C9\u0160\u0178\u00D7"},
      {1253, "I\xD3\xA2\xBE\xF2", "i\xF3\xDC\xFD\xF2", "I\u03A3\u0386\u038E\u03C2"},
      {1254, "I\xDE\xDD\xD0\xFD", "i\xFE\xDD\xF0\xFD", "I\u015E\u0130\u011E\u0131"},
      {1257, "I\xCC\xA8\xAF\xDE", "i\xEC\xB8\xBF\xFE", "I\u0122\u00D8\u00C6\u017D"},
  };
  for (const auto& one : cases) {
    CodePage::Use(CodePageNumbered(one.number));
    EXPECT_EQ(LowerCase(one.capitals), one.small) << one.number;
    EXPECT_EQ(UpperCase(one.small), one.capitals) << one.number;
    EXPECT_TRUE(EqualsIgnoringCase(one.capitals, one.small)) << one.number;
    EXPECT_EQ(ToUtf8(one.capitals), one.utf8) << one.number;
    for (int i = 0; i < 256; ++i) {
      const std::string byte(1, static_cast<char>(i));
      EXPECT_EQ(FromUtf8(ToUtf8(byte)), byte) << one.number << ": " << i;
    }
  }
}

TEST_F(CodePages, AreRefusedWithSeveralBytesForACharacter) {
  for (const unsigned number : {932U, 936U, 949U, 950U, 65001U, 4711U}) {
    EXPECT_EQ(NumberOf([&] { static_cast<void>(CodePageNumbered(number)); }), 5) << number;
  }
}

TEST_F(CodePages, ShowOrRefuseWhatTheyLack) {
  for (const char* utf8 :
       {"\x80", "\xC3", "\xC3(", "\xC0\x80", "\xE0\x80\x80", "\xE2\x82", "\xED\xA0\x80",
        "\xF0\x9F\x98\x80", "\xF8\x88\x80\x80", "\xFF", "\u0416", "\xC2\x80"}) {
    EXPECT_EQ(FromUtf8(utf8), std::nullopt) << utf8;
  }
  EXPECT_EQ(FromUtf8Roughly("a\u0416\u00E9\xC3(\xF0\x9F\x98\x80\x80z"), "a?\xE9?(??z");
}

}  // namespace
}  // namespace gorbex::test
