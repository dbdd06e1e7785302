#include "platform/windows/file_system.h"

#include <gtest/gtest.h>

#include <array>
#include <thread>
#include <vector>

#include "platform/windows/program_folder.h"
#include "platform/windows/program_lock.h"
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

using Security = std::vector<std::byte>;

Security SecurityOf(const std::wstring& file, SECURITY_INFORMATION part) {
  Security security(1024);
  DWORD size = 0;
  GetFileSecurityW(file.c_str(), part, security.data(), 1024, &size);
  security.resize(size);
  return security;
}

void LetOnlyOwnerIn(const std::wstring& file) {
  auto owner = SecurityOf(file, OWNER_SECURITY_INFORMATION);
  PSID name = nullptr;
  BOOL isDefault = FALSE;
  GetSecurityDescriptorOwner(owner.data(), &name, &isDefault);
  alignas(ACL) std::array<std::byte, 256> room{};
  auto* const list = reinterpret_cast<ACL*>(room.data());
  InitializeAcl(list, room.size(), ACL_REVISION);
  AddAccessAllowedAce(list, ACL_REVISION, FILE_ALL_ACCESS, name);
  SECURITY_DESCRIPTOR rights{};
  InitializeSecurityDescriptor(&rights, SECURITY_DESCRIPTOR_REVISION);
  SetSecurityDescriptorDacl(&rights, TRUE, list, FALSE);
  SetFileSecurityW(file.c_str(), DACL_SECURITY_INFORMATION, &rights);
}

TEST(WindowsFiles, KeepTheirRights) {
  FilesOnSystem bench;
  const auto path = ToWide(bench.root + "f");
  bench.files.Write(bench.root + "f", "old");
  const auto common = SecurityOf(path, DACL_SECURITY_INFORMATION);
  LetOnlyOwnerIn(path);
  const auto own = SecurityOf(path, DACL_SECURITY_INFORMATION);
  ASSERT_NE(own, common);
  bench.files.Write(bench.root + "f", "new");
  EXPECT_EQ(SecurityOf(path, DACL_SECURITY_INFORMATION), own);
}

TEST(WindowsFiles, KeepTheirOtherNamesAndPassOverThoseLeftByOthers) {
  FilesOnSystem bench;
  const auto file = bench.root + "f";
  bench.files.Write(file, "old");
  ASSERT_TRUE(CreateHardLinkW(ToWide(bench.root + "g").c_str(), ToWide(file).c_str(), nullptr));
  for (const std::string text : {"x", "longer than before"}) {
    bench.files.Write(file, text);
    EXPECT_EQ(bench.files.Read(bench.root + "g"), text);
  }
  const auto leftOver = bench.root + ".gorbex-" + std::to_string(GetCurrentProcessId()) + "-";
  for (int i = 1; i <= 50; ++i) bench.files.Append(leftOver + std::to_string(i), "left over");
  bench.files.Write(bench.root + "h", "new");
  EXPECT_EQ(bench.files.Read(bench.root + "h"), "new");
  EXPECT_EQ(bench.files.List(bench.root).size(), 53U);
}

TEST(WindowsFiles, AreWrittenThoughAnotherProgramLooksAtThem) {
  FilesOnSystem bench;
  const auto file = bench.root + "f";
  bench.files.Write(file, "old");
  const auto hold = [&](DWORD share) {
    return CreateFileW(ToWide(file).c_str(), GENERIC_READ, share, nullptr, OPEN_EXISTING, 0,
                       nullptr);
  };
  {
    const Handle editor(hold(FILE_SHARE_READ | FILE_SHARE_WRITE));
    bench.files.Write(file, "written in place");
    EXPECT_EQ(bench.files.Read(file), "written in place");
  }
  const HANDLE scanner = hold(0);
  std::thread scan([scanner] {
    Sleep(200);
    CloseHandle(scanner);
  });
  bench.files.Write(file, "written in the end");
  scan.join();
  EXPECT_EQ(bench.files.Read(file), "written in the end");
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

TEST(WindowsFiles, MarkNamesThatTheCodePageCannotSpell) {
  FilesOnSystem bench;
  std::ofstream(bench.folder.Path() / L"\u0416.txt") << "x";
  bench.files.Write(bench.root + "\x80.txt", "");
  std::string names;
  for (const auto& entry : bench.files.List(bench.root)) {
    names += entry.name + (entry.isReachable ? " " : " is not reachable ");
  }
  EXPECT_EQ(names, "?.txt is not reachable \x80.txt ");
}

TEST(WindowsFiles, LockOutOtherProgramsThatMayOnlyRead) {
  FilesOnSystem bench;
  const auto file = bench.root + "lock";
  bench.files.Write(file, "");
  bench.files.SetAttributes(file, file_attribute::kReadOnly);
  auto held = ProgramLock::Try(file);
  EXPECT_TRUE(held);
  EXPECT_FALSE(ProgramLock::Try(file));
  held.reset();
  EXPECT_TRUE(ProgramLock::Try(file));
  bench.files.SetAttributes(file, 0);
}

TEST(WindowsFiles, LockAProductWithoutLeavingAnythingThere) {
  FilesOnSystem bench;
  auto held = ProgramLock::TryProduct("C:\\Group");
  EXPECT_TRUE(held);
  EXPECT_FALSE(ProgramLock::TryProduct("c:\\group"));
  EXPECT_TRUE(ProgramLock::TryProduct("C:\\Group\\Other"));
  held.reset();
  EXPECT_TRUE(ProgramLock::TryProduct("C:\\Group"));
}

TEST(WindowsFiles, FindAProgramFolderOfAnyName) {
  FilesOnSystem bench;
  EXPECT_EQ(SpelledFolder(L"C:\\Gr\u00FC\u00DF"), "C:\\Gr\xFC\xDF");

  const auto folder = bench.folder.Path() / L"\u0416";
  std::filesystem::create_directory(folder);
  bench.files.Write(SpelledFolder(folder.wstring()) + "\\f", "");
  EXPECT_TRUE(std::filesystem::exists(folder / "f"));

  // A folder that is not there has no short name either.
  const auto instead = SpelledFolder(L"C:\\none\\\u0416");
  bench.files.Write(instead + "\\f", "");
  EXPECT_EQ(SpelledFolder(L"C:\\none\\\u0416"), instead);
  EXPECT_NE(SpelledFolder(L"C:\\none\\\u0417"), instead);
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
