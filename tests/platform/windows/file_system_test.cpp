#include "platform/windows/file_system.h"

#include <gtest/gtest.h>

#include "system_bench.h"
#include "tests/platform/outcome.h"

namespace gorbex::test {
namespace {

TEST(WindowsFiles, KeepAttributesAndLeaveNothingBehind) {
  FilesOnSystem bench;
  const auto file = bench.root + "f";
  bench.files.Write(file, "old");
  bench.files.SetAttributes(file, file_attribute::kHidden | file_attribute::kArchive);
  const auto before = bench.files.Look(file)->attributes;
  bench.files.Write(file, "new");
  EXPECT_EQ(bench.files.Look(file)->attributes, before);
  EXPECT_EQ(bench.files.Read(file), "new");

  const Handle held(
      CreateFileW(ToWide(file).c_str(), GENERIC_READ, 0, nullptr, OPEN_EXISTING, 0, nullptr));
  EXPECT_EQ(NumberOf([&] { bench.files.Write(file, "newer"); }), 70);
  EXPECT_EQ(NumberOf([&] { static_cast<void>(bench.files.Read(file)); }), 70);
  EXPECT_EQ(bench.files.List(bench.root).size(), 1U);
}

TEST(WindowsFiles, TouchPlainFilesAlone) {
  FilesOnSystem bench;
  for (const auto& path : {std::string("NUL"), bench.root + "nul", std::string("\\\\.\\C:"),
                           std::string("//./pipe/x"), std::string("COM1")}) {
    EXPECT_FALSE(bench.files.Look(path)) << path;
    EXPECT_NE(NumberOf([&] { static_cast<void>(bench.files.Read(path)); }), 0) << path;
    EXPECT_NE(NumberOf([&] { bench.files.Write(path, ""); }), 0) << path;
    EXPECT_NE(NumberOf([&] { bench.files.Append(path, ""); }), 0) << path;
  }
}

TEST(WindowsFiles, PassOverNamesThatTheCodePageCannotSpell) {
  FilesOnSystem bench;
  std::ofstream(bench.folder.Path() / L"\u0416.txt") << "x";
  bench.files.Write(bench.root + "\x80.txt", "");
  const auto entries = bench.files.List(bench.root);
  ASSERT_EQ(entries.size(), 1U);
  EXPECT_EQ(entries[0].name, "\x80.txt");
}

TEST(WindowsFiles, GiveTheTimeOfTheFile) {
  FilesOnSystem bench;
  const auto path = ToWide(bench.root + "f");
  const Handle file(
      CreateFileW(path.c_str(), GENERIC_WRITE, FILE_SHARE_READ, nullptr, CREATE_NEW, 0, nullptr));
  constexpr std::uint64_t kTicks = 126'444'736'001'234'567U;
  const FILETIME time{static_cast<DWORD>(kTicks), static_cast<DWORD>(kTicks >> 32U)};
  ASSERT_TRUE(SetFileTime(file.Get(), nullptr, nullptr, &time));
  EXPECT_EQ(bench.files.Look(bench.root + "f")->lastWrite, FileTime{kTicks});
}

}  // namespace
}  // namespace gorbex::test
