#include "platform/linux/plugin_objects.h"

#include <gtest/gtest.h>

#include "tests/platform/outcome.h"
#include "tests/platform/temporary_folder.h"
#include "tests/support/memory_registry.h"

namespace gorbex::test {
namespace {

struct PluginObjectsTest : testing::Test {
  // The sample plug-in tells its classes apart by the first letter.
  void Register(const std::string& path, char letter) {
    const auto clsid = std::string("{") + letter + "0000000-0000-4000-8000-00000000000f}";
    registry.AddText(RegistryRoot::ClassesRoot, "S.X\\CLSID", "", clsid);
    registry.AddText(RegistryRoot::ClassesRoot, "CLSID\\" + clsid + "\\InprocServer32", "", path);
  }

  TemporaryFolder folder;
  Prefix prefix{folder.Path()};
  Journal journal;
  MemoryRegistry registry{journal};
  PluginObjects objects{registry, prefix};
  std::string sample = prefix.WindowsPath(SAMPLE_PLUGIN);
};

TEST_F(PluginObjectsTest, SayWhyAnObjectCannotBeMade) {
  folder.Put("drive_c/core.dll", "MZ\x90");
  folder.Put("drive_c/text.so", "text");
  folder.Put("drive_c/torn.so", "\177ELF");
  const std::tuple<std::string, char, std::string> cases[] = {
      {"", 'A', "its class {A0000000-0000-4000-8000-00000000000F} has no in-process server"},
      {sample, '\\', "' is registered for it, which is not a class identifier"},
      {"plugin.so", 'A', "'plugin.so' is not the full path of a file"},
      {"C:\\gone.so", 'A', "'C:\\gone.so' does not exist"},
      {"C:\\Core.DLL", 'A', "' is a Windows DLL; on Linux only plug-ins can be tested"},
      {"C:\\text.so", 'A', "'C:\\text.so' is not a Linux shared library"},
      {"C:\\torn.so", 'A', "'C:\\torn.so' cannot be loaded: "},
      {prefix.WindowsPath(NO_PLUGIN), 'A', "is not a plug-in: it has no function gorbex_plugin_cl"},
      {sample, 'C', " is made for version 7 of the plug-in interface, this program has version 1"},
      {sample, 'D', " hands out an incomplete class"},
      {sample, 'E', " hands out an incomplete user control"},
      {sample, 'F', ": no paper"},
      {sample, '9', " does not know the class {90000000-0000-4000-8000-00000000000F}"},
      {sample, 'A', ": it is not a user control"},
  };
  const std::string start = "429 ActiveX component can't create object: 'S.X': ";
  EXPECT_EQ(ErrorOf([&] { objects.AddLicense("S.X"); }), start + "it is not registered");
  for (const auto& [path, letter, reason] : cases) {
    Register(path, letter);
    const auto error = ErrorOf([&] { static_cast<void>(objects.CreateControl("S.X", {})); });
    EXPECT_TRUE(error.starts_with(start) && error.find(reason) != std::string::npos) << error;
  }
}

TEST_F(PluginObjectsTest, ServesPropertiesAndPicturesAlsoAfterTheServiceIsGone) {
  int wishes = 0;
  Register(sample, 'b');
  const auto dial = PluginObjects(objects).CreateControl("S.X", [&] { ++wishes; });
  dial->SetSize({-5, 99999});
  dial->Pointer({});
  std::vector<std::uint32_t> inside(9);
  dial->Paint({inside.data(), {3, 3}, 3});
  EXPECT_EQ(inside[4], 0x16384U) << "it is 0 wide and 16384 high";
  for (const char32_t letter : U"123456") {
    if (letter != 0) dial->KeyPress(letter);
  }
  EXPECT_EQ(wishes, 6);
  std::vector<std::uint32_t> pixels(12);
  dial->Paint({pixels.data(), {3, 3}, 4});
  constexpr std::uint32_t w = 0xFFFFFF;
  EXPECT_EQ(pixels, (std::vector<std::uint32_t>{w, w, w, 0, w, 0x123456, w, 0, w, w, w, 0}));

  const auto object = PluginObjects(objects).CreateObject("S.X");
  object->Let("text", "123456 \x80");
  EXPECT_EQ(object->Get("Text"), "123456 \x80");
  for (const auto& [name, setting, reading] : std::vector<std::array<std::string, 3>>{
           {"Text", "13 Type mismatch: 'Text'", "<none>"},
           {"Size", "383 Set not supported (read-only property): 'Size'", "440 paper jam"},
           {"Long", "438 Object doesn't support this property or method: 'Long'",
            "13 Type mismatch: 'Long'"}}) {
    EXPECT_EQ(ErrorOf([&] { object->Let(name, std::string(40, 'x')); }), setting);
    EXPECT_EQ(ErrorOf([&] { static_cast<void>(object->Get(name)); }), reading);
  }
}

}  // namespace
}  // namespace gorbex::test
