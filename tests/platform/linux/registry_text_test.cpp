#include "platform/linux/registry_text.h"

#include <gtest/gtest.h>

namespace gorbex {
namespace {

using namespace std::string_literals;

constexpr const char* kSample =
    "WINE REGISTRY Version 2\r\n;; comment\n#arch=win64\n\n[Software\\\\Foo \\[x\\]] 1234567\n"
    "#time=1d5\n@=\"plain\"\n\"quo\\\"te\\\\\"=\"a\\n\\t\\x20ac\\x416\\0012\\0\"\n"
    "\"two\"=str(2):\"%x%\"\n\"multi\"=str(7):\"a\\0b\\0\"\n\"num\"=dword:0000012c\n"
    "\"bin\"=hex:00,ff,\\\n  7f\n\"wide\"=hex(2):41,00,ac,20,16,04,\\\r\n  00,00\n"
    "\"quad\"=hex(b):01,00\n[Empty]\n";

void ExpectSample(const RegistryKey& top) {
  const auto* key = top.Find("software\\FOO [X]");
  ASSERT_NE(key, nullptr);
  EXPECT_NE(top.Find("Empty"), nullptr);
  const std::pair<std::string, RegistryValue> values[] = {
      {"", {RegistryType::Text, "plain\0"s}},
      {"QUO\"te\\", {RegistryType::Text, "a\n\t\x80?\1\62\0\0"s}},
      {"two", {RegistryType::ExpandText, "%x%\0"s}},
      {"multi", {RegistryType::MultiText, "a\0b\0\0"s}},
      {"num", {RegistryType::Number, "\x2C\x01\0\0"s}},
      {"bin", {RegistryType::Binary, "\0\xFF\x7F"s}},
      {"wide", {RegistryType::ExpandText, "A\x80?\0"s}},
      {"quad", {static_cast<RegistryType>(11), "\x01\0"s}},
  };
  EXPECT_EQ(key->values.size(), std::size(values));
  for (const auto& [name, value] : values) {
    const auto found = key->values.find(name);
    ASSERT_NE(found, key->values.end()) << name;
    EXPECT_EQ(found->second, value) << name;
  }
}

TEST(RegistryText, ReadsWineFilesAndItsOwn) {
  RegistryKey read;
  EXPECT_EQ(ReadRegistryText(kSample, read), 0U);
  ExpectSample(read);
  RegistryKey again;
  EXPECT_EQ(ReadRegistryText(WriteRegistryText(read), again), 0U);
  ExpectSample(again);
}

TEST(RegistryText, ReadsOnBehindWhatMakesNoSense) {
  const std::string good = "\n[A]\n\"v\"=dword:00000001\n";
  for (const std::string& bad :
       {std::string(500, '\0'), "[unclosed"s, "\"unclosed"s, "\"x\"="s, "[A]\n\"x\"=\"open"s,
        "[A]\n\"x\"=\"open\\"s, "[A]\n\"x\"=hex:0g"s, "[A]\n\"x\"=hex(:00"s, "[A]\n\"x\"=dword:"s,
        "[A]\n\"x\"=dword:123456789"s, "[A]\n\"x\"=str(1)\"a\""s, "\xFF\xFE[\0A\0]\0"s, "="s,
        "\"before any key\"=dword:00000001"s, "[" + std::string(300, 'n') + "]"}) {
    RegistryKey top;
    EXPECT_EQ(ReadRegistryText(bad + good, top), 1U) << bad;
    ASSERT_NE(top.Find("A"), nullptr) << bad;
    EXPECT_EQ(top.Find("A")->values.size(), 1U) << bad;
  }
  std::string deep = "[";
  for (int i = 0; i < 100'000; ++i) deep += "a\\\\";
  RegistryKey top;
  EXPECT_EQ(ReadRegistryText(deep + "]", top), 1U);
}

TEST(RegistryText, SurvivesEveryTruncationAndByte) {
  const std::string sample = kSample;
  for (std::size_t i = 0; i < sample.size(); ++i) {
    RegistryKey cut;
    ReadRegistryText(std::string(sample, 0, i), cut);
    for (const char byte : {'\0', '\\', '"', '[', '\n', '\xFF'}) {
      auto changed = sample;
      changed[i] = byte;
      RegistryKey top;
      ReadRegistryText(changed, top);
      RegistryKey again;
      EXPECT_EQ(ReadRegistryText(WriteRegistryText(top), again), 0U) << i;
      EXPECT_EQ(WriteRegistryText(again), WriteRegistryText(top)) << i;
    }
  }
}

}  // namespace
}  // namespace gorbex
