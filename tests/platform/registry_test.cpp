#include <gtest/gtest.h>

#include "system_bench.h"
#include "tests/platform/registry_text_value.h"
#include "tests/support/memory_registry.h"

namespace gorbex::test {
namespace {

using Root = RegistryRoot;
using namespace std::string_literals;

struct RegistryInMemory {
  Journal journal;
  MemoryRegistry registry{journal};
  static std::string Under(RegistryRoot /*root*/) { return {}; }
};

template <typename Bench>
class Registries : public testing::Test {
 protected:
  /// The path of a key below those that the test may change.
  [[nodiscard]] std::string Key(RegistryRoot root, const std::string& name) const {
    return bench_.Under(root) + name;
  }

  Bench bench_;
  Registry& registry_ = bench_.registry;
};

using RegistryBenches = testing::Types<RegistryInMemory, RegistryOnSystem>;
TYPED_TEST_SUITE(Registries, RegistryBenches);

TYPED_TEST(Registries, GiveBackWhatWasSetAndMakeKeysWithThoseAbove) {
  auto& registry = this->registry_;
  std::string all;
  for (int i = 255; i > 0; --i) all += static_cast<char>(i);
  using enum RegistryType;
  const RegistryValue values[] = {
      TextValue(all),       TextValue(""),          {Text, "no zero"},
      {Text, ""},           {ExpandText, "%p%\0"s}, {MultiText, "a\0b\0\0"s},
      {Binary, all + '\0'}, {Binary, ""},           {Number, "\x01\x02\x03\xFF"}};
  for (const auto& value : values) {
    for (const Root root :
         {Root::ClassesRoot, Root::CurrentUser, Root::LocalMachine, Root::Users}) {
      ASSERT_TRUE(
          registry.SetValue(root, this->Key(root, "Soft[w]are\\K \xC4"), "N\\\"\x80", value));
      EXPECT_EQ(registry.Value(root, this->Key(root, "soft[W]are\\k \xE4"), "n\\\"\x80"), value);
    }
  }
  EXPECT_TRUE(registry.SetValue(Root::CurrentUser, this->Key(Root::CurrentUser, "Soft[w]are"), "",
                                TextValue("default")));
  EXPECT_EQ(TextOf(registry, Root::CurrentUser, this->Key(Root::CurrentUser, "SOFT[w]ARE"), ""),
            "default");
  EXPECT_FALSE(
      registry.Value(Root::CurrentUser, this->Key(Root::CurrentUser, "Soft[w]are"), "none"));
  EXPECT_FALSE(registry.HasKey(Root::LocalMachine, this->Key(Root::LocalMachine, "A")));
  EXPECT_TRUE(registry.CreateKey(Root::LocalMachine, this->Key(Root::LocalMachine, "A\\B\\C")));
  EXPECT_TRUE(registry.CreateKey(Root::LocalMachine, this->Key(Root::LocalMachine, "a\\b")));
  EXPECT_TRUE(registry.HasKey(Root::LocalMachine, this->Key(Root::LocalMachine, "A")));
  EXPECT_TRUE(registry.HasKey(Root::LocalMachine, this->Key(Root::LocalMachine, "a\\B\\c")));
}

}  // namespace
}  // namespace gorbex::test
