#include "platform/linux/file_system.h"

#include <fcntl.h>
#include <gtest/gtest.h>
#include <sys/resource.h>
#include <sys/stat.h>

#include <csignal>

#include "system_bench.h"
#include "tests/platform/outcome.h"

namespace gorbex::test {
namespace {

namespace fs = std::filesystem;

TEST(LinuxFiles, KeepModeAndLinksAndLeaveNothingBehind) {
  FilesOnSystem bench;
  bench.folder.Put("drive_c/A/real", "old");
  const auto real = bench.folder.Path() / "drive_c/A/real";
  chmod(real.c_str(), 0640);
  fs::create_symlink("A/real", bench.folder.Path() / "drive_c/link");
  fs::create_symlink("A/later", bench.folder.Path() / "drive_c/dangling");
  bench.files.Write("C:\\LINK", "new");
  bench.files.Write("C:\\dangling", "made");
  EXPECT_EQ(bench.folder.Get("drive_c/A/real"), "new");
  EXPECT_EQ(bench.folder.Get("drive_c/A/later"), "made");
  EXPECT_TRUE(fs::is_symlink(bench.folder.Path() / "drive_c/link"));
  EXPECT_EQ(static_cast<int>(fs::status(real).permissions()), 0640);

  rlimit old{};
  getrlimit(RLIMIT_FSIZE, &old);
  const rlimit small{1024, old.rlim_max};
  const auto handler = std::signal(SIGXFSZ, SIG_IGN);
  setrlimit(RLIMIT_FSIZE, &small);
  const int number = NumberOf([&] { bench.files.Write("C:\\A\\real", std::string(5000, 'x')); });
  const std::string lines(1000, 'x');
  bench.files.Append("C:\\log", lines);
  const int atAppend = NumberOf([&] { bench.files.Append("C:\\log", std::string(100, 'y')); });
  setrlimit(RLIMIT_FSIZE, &old);
  std::signal(SIGXFSZ, handler);
  EXPECT_EQ(number, 61);
  EXPECT_EQ(atAppend, 61);
  EXPECT_EQ(bench.files.Read("C:\\log"), lines) << "all of a line or nothing";
  EXPECT_EQ(bench.folder.Get("drive_c/A/real"), "new");
  EXPECT_EQ(bench.files.List("C:\\A").size(), 2U);
}

TEST(LinuxFiles, TouchPlainFilesAlone) {
  FilesOnSystem bench;
  mkfifo((bench.folder.Path() / "drive_c/pipe").c_str(), 0600);
  EXPECT_EQ(NumberOf([&] { (void)bench.files.Read("C:\\pipe"); }), 75);
  EXPECT_EQ(NumberOf([&] { bench.files.Write("C:\\pipe", ""); }), 75);
  EXPECT_EQ(NumberOf([&] { bench.files.Append("C:\\pipe", ""); }), 75);
  EXPECT_EQ(NumberOf([&] { (void)bench.files.Read("Z:\\dev\\null"); }), 75);
  EXPECT_NE(bench.files.Read("Z:\\proc\\self\\status"), "") << "a file that says its size is 0";
}

TEST(LinuxFiles, GiveTheTimeOfTheHost) {
  FilesOnSystem bench;
  bench.files.Write("C:\\f", "");
  const timespec times[2] = {{0, 0}, {1'000'000'000, 123'456'789}};
  utimensat(AT_FDCWD, (bench.folder.Path() / "drive_c/f").c_str(), times, 0);
  EXPECT_EQ(bench.files.Look("C:\\f")->lastWrite, FileTime{126'444'736'001'234'567U});
}

}  // namespace
}  // namespace gorbex::test
