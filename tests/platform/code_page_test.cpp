#include "platform/code_page.h"

#include <gtest/gtest.h>

namespace gorbex {
namespace {

TEST(CodePage, EveryByteSurvivesUtf8AndCase) {
  for (int i = 0; i < 256; ++i) {
    const std::string byte(1, static_cast<char>(i));
    EXPECT_EQ(FromUtf8(ToUtf8(byte)), byte) << i;
    EXPECT_EQ(FromUnicode(ToUnicode(byte[0])), byte[0]) << i;
    EXPECT_TRUE(EqualsIgnoringCase(UpperCase(byte), LowerCase(byte))) << i;
  }
  EXPECT_EQ(ToUtf8("\x80\x81\xE9"), "\u20AC\xC2\x81\u00E9");
  EXPECT_EQ(LowerCase("\xC9\xD7\x8A\x9F"), "\xE9\xD7\x9A\xFF");
  EXPECT_EQ(UpperCase("\xF7\xDF\xFF"), "\xF7\xDF\x9F");
}

TEST(CodePage, RefusesWhatItCannotHold) {
  for (const char* utf8 :
       {"\x80", "\xC3", "\xC3(", "\xC0\x80", "\xE0\x80\x80", "\xE2\x82", "\xED\xA0\x80",
        "\xF0\x9F\x98\x80", "\xF8\x88\x80\x80", "\xFF", "\u0416", "\xC2\x80"}) {
    EXPECT_EQ(FromUtf8(utf8), std::nullopt) << utf8;
  }
}

}  // namespace
}  // namespace gorbex
