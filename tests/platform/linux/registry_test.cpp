#include "platform/linux/registry.h"

#include <gtest/gtest.h>

#include <map>
#include <optional>

#include "platform/linux/registry_text.h"
#include "system_bench.h"
#include "tests/platform/registry_text_value.h"

namespace gorbex::test {
namespace {

namespace fs = std::filesystem;
using Root = RegistryRoot;
using namespace std::string_literals;

TEST(LinuxRegistries, MergeWineFilesUnderTheOwnFile) {
  RegistryOnSystem bench;
  const std::string machine = "[Software\\\\Classes\\\\Both]\n@=\"machine\"\n\"m\"=\"m\"\n";
  const std::string user =
      "[Software\\\\Classes\\\\Both]\n@=\"user\"\n[Software\\\\K]\n\"v\"=\"hkcu\"\n";
  bench.folder.Put("system.reg", machine);
  bench.folder.Put("user.reg", user);
  auto& registry = bench.registry;
  EXPECT_EQ(TextOf(registry, Root::ClassesRoot, "Both", ""), "user");
  EXPECT_EQ(TextOf(registry, Root::ClassesRoot, "Both", "m"), "m");
  EXPECT_EQ(TextOf(registry, Root::CurrentUser, "Software\\K", "v"), "hkcu");
  EXPECT_TRUE(registry.SetValue(Root::CurrentUser, "Software\\K", "v", TextValue("own")));
  EXPECT_TRUE(registry.SetValue(Root::ClassesRoot, "both", "m", TextValue("users now")));
  EXPECT_TRUE(registry.SetValue(Root::ClassesRoot, "New", "", TextValue("machine's")));
  EXPECT_EQ(TextOf(registry, Root::CurrentUser, "Software\\K", "v"), "own");
  EXPECT_EQ(TextOf(registry, Root::CurrentUser, "Software\\Classes\\Both", "m"), "users now");
  EXPECT_EQ(TextOf(registry, Root::LocalMachine, "Software\\Classes\\New", ""), "machine's");
  EXPECT_EQ(TextOf(registry, Root::ClassesRoot, "new", ""), "machine's");
  EXPECT_EQ(bench.folder.Get("system.reg") + bench.folder.Get("user.reg"), machine + user);
}

TEST(LinuxRegistries, SeeEachOthersWritesAndWines) {
  RegistryOnSystem bench;
  LinuxRegistry other(bench.folder.Path());
  for (const char* name : {"a", "b", "c", "d"}) {
    ASSERT_TRUE(bench.registry.SetValue(Root::CurrentUser, "K", name, TextValue("1")));
    ASSERT_TRUE(other.SetValue(Root::CurrentUser, "K\\L", name, TextValue("2")));
  }
  other.Recheck();
  for (const char* name : {"a", "b", "c", "d"}) {
    EXPECT_EQ(TextOf(other, Root::CurrentUser, "K", name), "1");
    EXPECT_EQ(TextOf(other, Root::CurrentUser, "K\\L", name), "2");
  }
  for (const std::string text : {"a", "b", "c"}) {  // same size, within one step of the clock
    bench.folder.Put("user.reg", "[W]\n@=\"" + text + "\"\n");
    other.Recheck();
    EXPECT_EQ(TextOf(other, Root::CurrentUser, "W", ""), text);
  }
  fs::remove(bench.folder.Path() / "user.reg");
  other.Recheck();
  EXPECT_FALSE(other.HasKey(Root::CurrentUser, "W"));
}

// As the registry editor writes it.
std::string Export(const std::string& text) {
  std::string utf16 = "\xFF\xFE";
  for (const char letter : "Windows Registry Editor Version 5.00\r\n\r\n" + text) {
    if (letter != '\0') utf16.append(1, letter).append(1, '\0');
  }
  return utf16;
}

TEST(LinuxRegistries, AskWineWhatItsFilesDoNotHaveYet) {
  RegistryOnSystem bench;
  std::string asked;
  std::map<std::string, std::optional<std::string>> live;
  LinuxRegistry registry(bench.folder.Path(), [&](const std::string& key) {
    asked += key.substr(key.find("Classes")) + ";";
    return live[key];
  });
  const std::string classes = "HKEY_LOCAL_MACHINE\\Software\\Classes\\";
  bench.folder.Put("system.reg",
                   "[Software\\\\Classes\\\\TypeLib\\\\Old]\n@=\"old\"\n"
                   "[Software\\\\Classes\\\\Wow6432Node\\\\Interface\\\\I]\n@=\"narrow\"\n"
                   "[Software\\\\Classes\\\\Interface\\\\I]\n@=\"wide\"\n");
  live[classes + "TypeLib"] = Export(
      "[" + classes + "TypeLib\\x\\New]\r\n@=\"C:\\\\a \\\"b\\\"\"\r\n\"n\"=dword:00000001\r\n");
  live[classes + "Wow6432Node\\TypeLib"] = "";
  const auto text = [&](const std::string& key) {
    return TextOf(registry, Root::ClassesRoot, key, "");
  };
  EXPECT_EQ(text("TypeLib\\Old"), "old");
  EXPECT_EQ(text("Interface\\I"), "narrow");
  EXPECT_EQ(asked, "");
  registry.RecheckWine();
  EXPECT_EQ(text("TypeLib\\X\\new"), "C:\\a \"b\"");
  EXPECT_FALSE(registry.HasKey(Root::ClassesRoot, "TypeLib\\Old"));
  EXPECT_EQ(asked, "Classes\\TypeLib;Classes\\Wow6432Node\\TypeLib;");
  // What Wine does not tell stays as the files have it; newer files win.
  EXPECT_EQ(text("Interface\\I"), "narrow");
  live.clear();
  bench.folder.Put("system.reg", "[Software\\\\Classes\\\\TypeLib\\\\Newest]\n@=\"newest\"\n");
  registry.Recheck();
  EXPECT_EQ(text("TypeLib\\Newest"), "newest");
  EXPECT_FALSE(registry.HasKey(Root::ClassesRoot, "TypeLib\\x\\New"));
}

TEST(LinuxRegistries, LoseNothingOfADamagedFile) {
  RegistryOnSystem bench;
  const std::string damaged =
      "[HKEY_CURRENT_USER\\\\K]\n\"good\"=\"1\"\n\"bad\"=\"2\n\"last\"=\"3\"\n\0\0"s;
  bench.folder.Put("gorbexbuilder.reg", damaged);
  EXPECT_TRUE(bench.registry.SetValue(Root::CurrentUser, "K", "new", TextValue("4")));
  for (const auto& [name, text] : {std::pair("good", "1"), {"last", "3"}, {"new", "4"}}) {
    EXPECT_EQ(TextOf(LinuxRegistry(bench.folder.Path()), Root::CurrentUser, "K", name), text);
  }
  EXPECT_EQ(bench.folder.Get("gorbexbuilder.reg.damaged"), damaged);
}

TEST(LinuxRegistries, TakeNoUnreadableFileForAnEmptyOne) {
  for (const char* name : {"gorbexbuilder.reg", "system.reg", "user.reg"}) {
    RegistryOnSystem bench;
    EXPECT_NO_THROW(bench.registry.RequireReadable());
    fs::create_directory(bench.folder.Path() / name);
    EXPECT_THROW(LinuxRegistry(bench.folder.Path()).RequireReadable(), RuntimeError) << name;
  }
}

TEST(LinuxRegistries, RefuseWhatCannotBeWritten) {
  RegistryOnSystem bench;
  EXPECT_FALSE(bench.registry.CreateKey(Root::PerformanceData, "K"));
  EXPECT_FALSE(bench.registry.CreateKey(Root::CurrentUser, std::string(300, 'n')));
  fs::create_directory(bench.folder.Path() / "gorbexbuilder.reg");
  EXPECT_FALSE(bench.registry.CreateKey(Root::CurrentUser, "K"));
  EXPECT_FALSE(bench.registry.SetValue(Root::CurrentUser, "K", "v", TextValue("x")));
  EXPECT_FALSE(bench.registry.HasKey(Root::CurrentUser, "K"));
}

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

TEST(RegistryText, TakesNoKeyOfEndlessDepth) {
  std::string deep = "[";
  for (int i = 0; i < 100'000; ++i) deep += "a\\\\";
  RegistryKey top;
  EXPECT_EQ(ReadRegistryText(deep + "]", top), 1U);
}

}  // namespace
}  // namespace gorbex::test
