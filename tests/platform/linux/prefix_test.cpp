#include "platform/linux/prefix.h"

#include <gtest/gtest.h>

#include <chrono>
#include <map>

#include "platform/code_page.h"
#include "platform/linux/host.h"
#include "platform/runtime_error.h"
#include "tests/platform/temporary_folder.h"
#include "tests/support/recording_events.h"

namespace gorbex::test {
namespace {

namespace fs = std::filesystem;

TEST(Prefix, MapsWindowsPathsToTheHost) {
  const TemporaryFolder folder;
  const Prefix prefix(folder.Path());
  folder.Put("drive_c/Group/Core/Core.vbp", "");
  folder.Put("drive_c/Group/core/Other.vbp", "");
  folder.Put("drive_c/\u00C4\u20AC.txt", "");
  folder.Put("dosdevices/unc/server/share/f.txt", "");
  const CurrentFolder inside(folder.Path() / "drive_c/Group");

  const std::string nothing;
  const std::string longName(300, 'x');
  const std::pair<std::string, std::string> cases[] = {
      {"C:\\Group\\Core\\Core.vbp", "drive_c/Group/Core/Core.vbp"},
      {"c:/group/CORE/core.VBP", "drive_c/Group/Core/Core.vbp"},
      {"C:\\group\\CORE\\other.vbp", nothing},  // the first of two similar folders is taken
      {"C:\\..\\Group\\.\\Nowhere\\..\\Core\\", "drive_c/Group/Core"},
      {"\\Group", "drive_c/Group"},
      {"Core\\Core.vbp", "drive_c/Group/Core/Core.vbp"},
      {"C:\\\xE4\x80.TXT", "drive_c/\u00C4\u20AC.txt"},
      {"C:\\Group.", "drive_c/Group"},
      {"\\\\Server\\share\\..\\..\\share\\F.txt", nothing},
      {"\\\\Server\\Share\\..\\F.txt", "dosdevices/unc/server/share/f.txt"},
      {"Z:" + folder.Path().native() + "/DRIVE_C", "drive_c"},
      {"Q:\\x", nothing},
      {"", nothing},
      {"C:\\Group\\Core\\Core.vbp:stream", nothing},
      {"C:\\Gr?up", nothing},
      {std::string("C:\\Group\0", 9), nothing},
      {"C:\\Group\\Core\\Core.vbp\\x", nothing},
      {"C:\\" + longName, nothing},
      {"C:\\" + std::string(9000, '\\') + "Group", "drive_c/Group"},
  };
  for (const auto& [path, expected] : cases) {
    const auto found = prefix.Existing(path);
    ASSERT_EQ(found.has_value(), !expected.empty()) << path;
    if (!found) continue;
    EXPECT_EQ(fs::canonical(*found), folder.Path() / expected) << path;
  }
  EXPECT_TRUE(prefix.Target("C:\\GROUP\\New.vbp"));
  EXPECT_FALSE(prefix.Target("C:\\None\\New.vbp"));
  EXPECT_FALSE(prefix.Target("C:\\" + longName));
}

TEST(Prefix, ChoosesTheCodePage) {
  const std::string start = "WINE REGISTRY Version 2\n\n[System\\\\Other] 1\n\"ACP\"=\"1251\"\n\n";
  const std::string key =
      "[System\\\\CurrentControlSet\\\\Control\\\\Nls\\\\Codepage] 17\n#time=1\n";
  const std::pair<std::string, std::string> cases[] = {
      {start, ""},  // Windows-1252 lacks the letter
      {start + key + "\n[Last] 1\n\"ACP\"=\"1250\"\n", ""},
      {start + key + "\"10000\"=\"mac\"\n\"ACP\"=\"1250\"\n\n[Last] 1\n", "C:\\\xA3.vbp"},
      {start + key + "\"ACP\"=\"1257\"", "C:\\\xD9.vbp"},
      {start + key + "\"ACP\"=\"\"\n", ""},
      {start + key + "\"ACP\"=\"932\"\n", "5"},
      {start + key + "\"ACP\"=\"1252//\"\n", "5"},
  };
  for (const auto& [registry, expected] : cases) {
    const TemporaryFolder folder;
    folder.Put("system.reg", registry);
    folder.Put("drive_c/\u0142.vbp", "");
    std::string found;
    try {
      const LinuxHost host(folder.Path());
      found = FromUtf8("C:\\\u0141.vbp").value_or("");
      EXPECT_EQ(host.GetPrefix().Existing(found).has_value(), !found.empty()) << registry;
    } catch (const RuntimeError& error) {
      found = std::to_string(error.Number());
    }
    EXPECT_EQ(found, expected) << registry;
  }
  CodePage::Use(CodePage::Windows1252());
}

TEST(Prefix, LetsOneProgramOfAnyPrefixBuildAProduct) {
  const TemporaryFolder one, other, product;
  RecordingEvents events;
  LinuxHost here(one.Path()), there(other.Path());
  const auto folder = here.GetPrefix().WindowsPath(product.Path());
  const auto build = [&](LinuxHost& host, const std::string& of) {
    return host.Services(events).keepOthersOut(of);
  };
  auto held = build(here, folder);
  EXPECT_TRUE(held);
  EXPECT_FALSE(build(there, folder));
  EXPECT_TRUE(build(there, "")) << "nothing of this product";
  held.reset();
  EXPECT_TRUE(build(there, folder));
  EXPECT_TRUE(std::filesystem::is_empty(product.Path()));
}

TEST(Prefix, LooksAgainIntoAFolderThatChanged) {
  const TemporaryFolder folder;
  const Prefix prefix(folder.Path());
  folder.Put("drive_c/Lib/Old.dll", "");
  const auto library = folder.Path() / "drive_c/Lib";
  const auto past = fs::last_write_time(library) - std::chrono::hours(1);
  const auto isThere = [&] {
    // Copying tools give a folder its time back.
    fs::last_write_time(library, past);
    return prefix.Existing("C:\\lib\\NEW.dll").has_value();
  };
  EXPECT_FALSE(isThere());
  for (const char* name : {"New.dll", "new.dll"}) {
    folder.Put(std::string("drive_c/Lib/") + name, "");
    EXPECT_TRUE(isThere());
    fs::remove(library / name);
    EXPECT_FALSE(isThere());
  }
}

TEST(Prefix, NamesHostPathsAsWindowsDoes) {
  const TemporaryFolder folder;
  fs::create_directory(folder.Path() / "real");
  fs::create_directory_symlink("real", folder.Path() / "named");
  folder.Put("disk/deep/f", "");
  const Prefix prefix(folder.Path() / "named");
  fs::create_symlink(folder.Path() / "disk", folder.Path() / "real/dosdevices/d:");
  fs::create_symlink(folder.Path() / "disk/deep", folder.Path() / "real/dosdevices/e:");
  const auto root = folder.Path().native();
  const std::pair<std::string, std::string> cases[] = {
      {root + "/named/drive_c/A/b.vbp", "C:\\A\\b.vbp"},
      {root + "/real/drive_c/A/", "C:\\A"},
      {root + "/named/dosdevices/c:/A", "C:\\A"},
      {root + "/named/drive_cc", "Z:" + root + "/named/drive_cc"},
      {root + "/disk/deep/f", "E:\\f"},
      {root + "/disk/\u00E9", "D:\\\xE9"},
      {"/", "Z:\\"},
      {"/usr/../etc/x", "Z:\\etc\\x"},
  };
  for (auto [path, expected] : cases) {
    for (char& c : expected) c = c == '/' ? '\\' : c;
    EXPECT_EQ(prefix.WindowsPath(path), expected) << path;
  }
  for (const char* path : {"/tmp/\u0416", "/tmp/a\\b", "/tmp/a:b"}) {
    EXPECT_THROW((void)prefix.WindowsPath(path), RuntimeError) << path;
  }
}

TEST(Prefix, IsChosenInOrder) {
  const TemporaryFolder home;
  std::map<std::string, std::string> values = {{"HOME", home.Path().native()}};
  const auto environment = [&](const char* name) -> std::optional<std::string> {
    return values.contains(name) ? std::optional(values[name]) : std::nullopt;
  };
  EXPECT_EQ(Prefix::Choose({}, environment), home.Path() / ".local/share/gorbexbuilder");
  values["XDG_DATA_HOME"] = "/data";
  EXPECT_EQ(Prefix::Choose({}, environment), "/data/gorbexbuilder");
  fs::create_directory(home.Path() / ".wine");
  EXPECT_EQ(Prefix::Choose({}, environment), home.Path() / ".wine");
  values["WINEPREFIX"] = "/w";
  EXPECT_EQ(Prefix::Choose({}, environment), "/w");
  values["GORBEX_PREFIX"] = "";
  EXPECT_EQ(Prefix::Choose({}, environment), "/w");
  values["GORBEX_PREFIX"] = "/g";
  EXPECT_EQ(Prefix::Choose({}, environment), "/g");
  EXPECT_EQ(Prefix::Choose("/o", environment), "/o");
}

TEST(Prefix, SaysWhenItCannotBeMade) {
  const TemporaryFolder folder;
  folder.Put("file", "");
  EXPECT_THROW(Prefix(folder.Path() / "file/below"), RuntimeError);
}

}  // namespace
}  // namespace gorbex::test
