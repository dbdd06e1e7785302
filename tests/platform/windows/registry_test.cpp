#include "platform/windows/registry.h"

#include <gtest/gtest.h>

#include "system_bench.h"
#include "tests/platform/registry_text_value.h"

namespace gorbex::test {
namespace {

using Root = RegistryRoot;
using namespace std::string_literals;

TEST(WindowsRegistries, SeeWhatOtherProgramsWrite) {
  RegistryOnSystem bench;
  const auto key = RegistryOnSystem::Under(Root::CurrentUser) + "K";
  ASSERT_TRUE(bench.registry.CreateKey(Root::CurrentUser, key));
  HKEY open = nullptr;
  ASSERT_EQ(RegOpenKeyExW(HKEY_CURRENT_USER, ToWide(key).c_str(), 0, KEY_SET_VALUE, &open), 0);
  const std::wstring text = L"a\u20AC\u0416";
  const std::uint64_t number = 0x4142434445464748;
  RegSetValueExW(open, L"text", 0, REG_SZ, reinterpret_cast<const BYTE*>(text.c_str()), 8);
  RegSetValueExW(open, L"odd", 0, REG_SZ, reinterpret_cast<const BYTE*>(text.c_str()), 3);
  RegSetValueExW(open, L"long", 0, REG_QWORD, reinterpret_cast<const BYTE*>(&number), 8);
  RegCloseKey(open);
  EXPECT_EQ(TextOf(bench.registry, Root::CurrentUser, key, "text"), "a\x80?");
  EXPECT_EQ(bench.registry.Value(Root::CurrentUser, key, "odd")->bytes, "a");
  EXPECT_EQ(bench.registry.Value(Root::CurrentUser, key, "long")->bytes, "HGFEDCBA");
}

TEST(WindowsRegistries, RefuseWhatCannotBeWrittenAndNameNoOtherKey) {
  RegistryOnSystem bench;
  const auto top = RegistryOnSystem::Under(Root::CurrentUser);
  const std::string tooLong(300, 'n');
  EXPECT_FALSE(bench.registry.CreateKey(Root::PerformanceData, "K"));
  EXPECT_FALSE(bench.registry.CreateKey(Root::CurrentUser, top + tooLong));
  EXPECT_FALSE(bench.registry.SetValue(Root::CurrentUser, top + tooLong, "", TextValue("x")));
  ASSERT_TRUE(bench.registry.SetValue(Root::CurrentUser, top + "K", "v", TextValue("x")));
  EXPECT_FALSE(bench.registry.HasKey(Root::CurrentUser, top + "K\0x"s));
  EXPECT_FALSE(bench.registry.Value(Root::CurrentUser, top + "K", "v\0x"s));
  EXPECT_FALSE(bench.registry.SetValue(Root::CurrentUser, top + "K", "v\0x"s, TextValue("y")));
  EXPECT_EQ(TextOf(bench.registry, Root::CurrentUser, top + "K", "v"), "x");
}

}  // namespace
}  // namespace gorbex::test
