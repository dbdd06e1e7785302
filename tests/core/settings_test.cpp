#include "core/file_tools.h"
#include "core/options.h"
#include "core/registry_tools.h"
#include "tests/support/program_fixture.h"

namespace gorbex::test {
namespace {

using SettingsTest = ProgramFixture;
constexpr auto kUser = RegistryRoot::CurrentUser;

TEST_F(SettingsTest, FileTimesAreUniversalAndMissingIsNotUnreadable) {
  constexpr std::uint64_t kSecond = 10'000'000;
  constexpr std::uint64_t kDay = 86'400 * kSecond;
  const std::vector<std::pair<std::uint64_t, std::string>> times = {
      {0, "01/01/1601 00:00"},
      {kDay - 1, "01/01/1601 23:59"},
      {59 * kDay, "01/03/1601 00:00"},
      {116'444'736'000'000'000 + 11'016 * kDay + 84'600 * kSecond, "29/02/2000 23:30"}};
  for (const auto& [ticks, text] : times) EXPECT_EQ(GetFileDateString({ticks}), text);

  EXPECT_EQ(GetFileAmmendedTime(platform.files, "C:\\none.dll"), "Not Found");
  EXPECT_EQ(GetFileAmmendedTime(platform.files, "C:\\"), "Not Found");
  struct Untimed : MemoryFileSystem {
    using MemoryFileSystem::MemoryFileSystem;
    std::optional<FileInfo> Look(const std::string&) const override { return FileInfo{}; }
  };
  EXPECT_EQ(GetFileAmmendedTime(Untimed(platform.journal), "C:\\a"), "N/A");
}

TEST_F(SettingsTest, RegistryReadsByTypeAndFallsBackToTheDefault) {
  platform.registry.AddText(kUser, "K", "text", "True");
  platform.registry.AddText(kUser, "K", "empty", "");
  platform.registry.AddText(kUser, "K", "254", std::string(254, 'x'));
  platform.registry.AddText(kUser, "K", "255", std::string(255, 'x'));
  const std::string number("\x2C\1\0\0", 4);
  platform.registry.SetValue(kUser, "K", "number", {RegistryType::Number, number});
  platform.registry.SetValue(kUser, "K", "high", {RegistryType::Number, "\xFF\xFF\xFF\xFF"});
  using Row = std::array<std::string, 4>;
  const std::string key = "hkey_Current_user\\K";
  for (const Row& row :
       {Row{key, "text", "", "True"}, Row{key, "TEXT", "bool", "True"}, Row{key, "none", "", ""},
        Row{key, "none", "Bool", "False"}, Row{key, "none", "NUMBER", ""},
        Row{key, "empty", "STRING", ""}, Row{key, "empty", "BOOL", ""},
        Row{key, "254", "", std::string(254, 'x')}, Row{key, "255", "", ""},
        Row{key, "255", "BOOL", "False"}, Row{key, "number", "Number", "300"},
        Row{key, "high", "NUMBER", "4294967295"}, Row{key, "254", "NUMBER", ""},
        Row{key, "number", "BINARY", number}, Row{key, "text", "odd", ""},
        Row{"HKCU\\K", "text", "", ""}, Row{"HKCU\\K", "text", "BOOL", "False"},
        Row{"HKEY_CURRENT_USER", "text", "", ""}}) {
    EXPECT_EQ(program.registry.fnsGetRegistryValue(row[0], row[1], row[2]), row[3])
        << row[0] << " " << row[1] << " " << row[2];
  }
  std::uint32_t root = 0x80000000;
  for (const std::string name : {"HKEY_CLASSES_ROOT", "hkey_current_user", "HKEY_LOCAL_MACHINE",
                                 "HKEY_USERS", "HKEY_PERFORMANCE_DATA"}) {
    EXPECT_EQ(program.registry.fnlHKEYValue(name + "\\x\\y"), root++);
    EXPECT_EQ(program.registry.fnlHKEYValue("x" + name + "\\"), 0U);
  }
  EXPECT_TRUE(program.registry.KeyExists("HKEY_CURRENT_USER\\k"));
  EXPECT_FALSE(program.registry.KeyExists("HKEY_CURRENT_USER\\k\\l"));
}

TEST_F(SettingsTest, RegistryWritesByTypeAndSkipsWhatItCannot) {
  const auto set = [&](const std::string& key, const std::string& value, const std::string& type) {
    program.registry.subSetRegistryValue(key, "n", value, type);
  };
  const std::string key = "HKEY_CURRENT_USER\\K\\L";
  set(key, "7a", "");
  set(key, "300", "number");
  set(key, "-1", "Long");
  set(key, std::string("\0b", 2), "BINARY");
  set(key, "x", "BOOL");
  set("HKEY\\K", "x", "");
  set(key, std::string(254, 'x'), "");
  set("HKEY_CURRENT_USER\\M", std::string(255, 'x'), "");
  set(key, "9999999999", "NUMBER");
  platform.registry.refuses = true;
  set(key, "lost", "");
  EXPECT_EQ(Effects(), (Journal{"registry " + key, "registry " + key + " n=7a",
                                "registry " + key + " n=2c010000",
                                "registry " + key + " n=ffffffff", "registry " + key + " n=0062",
                                "registry " + key + " n=" + std::string(254, 'x'),
                                Reported(5,
                                         "n is longer than 254 characters, the most that can be "
                                         "stored",
                                         ": RegistryTools.subSetRegistryValue"),
                                Reported(6, "Overflow", ": RegistryTools.subSetRegistryValue")}));
}

TEST_F(SettingsTest, SettingsOfAFreshUserAreEmptyAndSavedOnesComeBack) {
  clsOptions& saved = program.options;
  saved.LoadSettings();
  EXPECT_EQ(saved.DebugBuild, "False");
  saved.DebugBuild = "True";
  saved.BuildPath = "C:\\\xC4";
  saved.ReplyTo = -7;
  saved.Interval = 90;
  saved.AutoBuildDependant = saved.Compatible = true;
  saved.SaveSettings();
  std::string written;
  for (std::string& line : Effects()) written += line.erase(0, 27 + kSettingsKey.size()) + "|";
  EXPECT_EQ(written,
            "| Interval=90| AutoStart=False| GetLatest=False| Compatible=True| ChangeRefs=False| "
            "StopProcessing=False| BuildPath=C:\\\xC4| WatchFolder=| ReplyTo=-7| ReplyUser=| "
            "AutoDependant=True| AutoLaunch Name=| AutoLaunch VBP=False| Debug Build=True| "
            "SkipUsersOfFailed=False| SkipUpToDate=False| Jobs=1| Editor=|");

  platform.registry.AddText(kUser, kSettingsKey, "Compatible", "1");
  platform.registry.AddText(kUser, kSettingsKey, "GetLatest", "tRUE");
  platform.registry.AddText(kUser, kSettingsKey, "ReplyTo", "40000");
  dialogs.answers = {Answer::Ignore};
  clsOptions loaded(program.registry, program.report);
  loaded.LoadSettings();
  EXPECT_TRUE(loaded.AutoBuildDependant && loaded.GetLatest && !loaded.Compatible);
  EXPECT_EQ(loaded.DebugBuild + loaded.BuildPath, "TrueC:\\\xC4");
  EXPECT_EQ(std::pair(loaded.Interval, int{loaded.ReplyTo}), std::pair(90, 0));
  EXPECT_EQ(Effects(),
            Journal{Reported(6, "Overflow: 'ReplyTo=40000'", ": clsOptions.LoadSettings")});
}

TEST_F(SettingsTest, SettingsThatCouldNotBeReadAreNotWritten) {
  const std::vector<std::pair<std::string, std::string>> stored = {
      {"Interval", "99999999999"}, {"AutoStart", "True"}, {"BuildPath", "C:\\Kept\\"}};
  for (const auto& [name, text] : stored)
    platform.registry.AddText(kUser, kSettingsKey, name, text);
  EXPECT_FALSE(program.options.LoadSettings()) << "the report is answered with Abort";
  program.options.ReplyUser = "me";
  program.options.SaveSettings();
  for (const auto& [name, text] : stored) {
    EXPECT_EQ(platform.registry.Text(kUser, kSettingsKey, name), text);
  }
  EXPECT_EQ(platform.registry.Text(kUser, kSettingsKey, "ReplyUser"), "me") << "set since";
  program.options.Interval = 30;
  program.options.SaveSettings();
  EXPECT_TRUE(program.options.LoadSettings() && program.options.AutoStart);
  EXPECT_EQ(program.options.Interval, 30);
}

}  // namespace
}  // namespace gorbex::test
